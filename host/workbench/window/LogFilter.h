#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/// The lines of the live log that are of one kind and match some words. Every word has to occur in
/// the line's text or thread, whatever the case; a word that begins with "-" must not.
class LogFilter final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit LogFilter(QObject* parent = nullptr);

    void setWords(const QString& words);

    /// The number of a TraceEntry::Kind, or -1 for all kinds.
    void setKind(int kind);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QStringList m_wanted;
    QStringList m_unwanted;
    int m_kind = -1;
};
