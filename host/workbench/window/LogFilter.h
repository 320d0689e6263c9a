#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/// Filters the live log by kind and by words. A line is accepted if its text or thread contains
/// every word, and none of the words that begin with "-". Case is ignored. Questions of painting
/// are left out unless they are asked for.
class LogFilter final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit LogFilter(QObject* parent = nullptr);

    void setWords(const QString& words);

    /// Accepts lines of one TraceEntry::Kind, or of all kinds if `kind` is -1.
    void setKind(int kind);

    /// Sets whether the questions are accepted that the panel asks while it paints. At first they
    /// are not.
    void setShowsPainting(bool shows);

    /// A line's text is its tool tip too. A finding has a colour, and its tip explains the code.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QStringList m_wanted;
    QStringList m_unwanted;
    int m_kind = -1;
    bool m_showsPainting = false;
};
