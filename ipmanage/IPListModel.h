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

/// The host's IP list as it was at the last reload: a flat table, one row an entry, of at most 255
/// rows. Empty until the first reload. GUI thread.
///
/// No operation looks at a parent: any row claims the rows of the whole table below itself. Views
/// of tables never ask.
class CIPListModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { AddressColumn, NameColumn, ColumnCount };

    /// Beside Qt::DisplayRole, the text of the column.
    enum Role {
        EntryRole = Qt::UserRole + 1 ///< In both columns the combined text.
    };

    explicit CIPListModel(QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// Horizontal display texts that setHeaderData() stored; nothing else.
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    /// Stores a horizontal display text and refuses any other. Emits nothing: set before a view
    /// looks, or have the view look again.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                       int role) override;

    /// Takes the list anew from the host; without a handler the table is empty afterwards.
    ///
    /// The host is asked before the reset begins: it may open dialogs or raise events in its
    /// answer, and views then still have whole rows to show. When the host answers with lists of
    /// differing lengths there is a row for each address, a missing name is empty, and a missing
    /// combined text is made of the two. When a reload is called for while the host is being asked,
    /// that one counts.
    void reload();

private:
    QVector<SIPListItem> m_items;
    QMap<int, QVariant> m_headers;
    int m_reloads = 0;
};
