#pragma once

#include <QAbstractItemModel>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

/// An entry of the host's IP list.
struct SIPListItem
{
    QString strIP;     ///< The address.
    QString strName;   ///< The name, which may be empty.
    QString strIPName; ///< Both, as the host combines them: "192.168.0.10(Left wing)".
};

/// A flat table of the host's IP list at the last reload, with one row for each of the first 255
/// entries. It is empty until the first reload. GUI thread. All operations ignore the parent, so
/// every row reports the rows of the whole table as its children. Table views do not ask for
/// children.
class CIPListModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { AddressColumn, NameColumn, ColumnCount };

    /// Qt::DisplayRole is the text of the column.
    enum Role {
        EntryRole = Qt::UserRole + 1 ///< The combined text, in both columns.
    };

    explicit CIPListModel(QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Returns the horizontal display texts that setHeaderData() stored.
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// Stores a horizontal display text and returns true; returns false for any other. It emits no
    /// signal, so an attached header view must be updated by the caller.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                       int role) override;

    /// Reads the list from the host. Without a handler the table becomes empty.
    ///
    /// The model calls the host before it begins the reset, because the host may open dialogs or
    /// raise events in that call, and views must not use a half reset model. If another reload
    /// starts inside the call, that one provides the rows. If the host returns lists of different
    /// lengths, each address gets a row, a missing name is empty, and a missing combined text is
    /// built from the address and the name.
    void reload();

private:
    QVector<SIPListItem> m_items;
    QMap<int, QVariant> m_headers;
    int m_reloads = 0;
};
