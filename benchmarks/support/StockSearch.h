#pragma once

#include <QSortFilterProxyModel>
#include <QString>

#include <memory>

class KDescendantsProxyModel;

/// The list of search results as it can be had without a proxy of one's own but for the rules: a
/// recursive filter, its rows as a list with their branches, of that the processors, sorted.
class StockSearch final
{
public:
    explicit StockSearch(QAbstractItemModel* tree);
    ~StockSearch();
    StockSearch(const StockSearch&) = delete;
    StockSearch& operator=(const StockSearch&) = delete;

    void setText(const QString& text);
    QAbstractItemModel& list() { return m_list; }

private:
    class Filter final : public QSortFilterProxyModel
    {
    public:
        void setText(const QString& text);

    protected:
        bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

    private:
        QString m_text;
    };

    class List final : public QSortFilterProxyModel
    {
    protected:
        bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
        bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    };

    Filter m_filter;
    std::unique_ptr<KDescendantsProxyModel> m_rows;
    List m_list;
};
