#pragma once

#include "host/workbench/project/FieldTexts.h"
#include "host/workbench/project/Project.h"
#include "host/workbench/window/RecordsModel.h"

#include <QSet>
#include <QWidget>

class QLabel;
class QSplitter;
class QTreeView;
class QTreeWidget;

/// The host's own view: the project's records, and beside them every field of the selected record,
/// or the IP list if no record is selected. Fields and entries are edited in place.
class RecordsPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit RecordsPanel(QWidget* parent = nullptr);

    /// Shows `project`; keeps the selection, the current row and the closed groups.
    void show(const Project& project);
    using QWidget::show;

    /// Shows `list`, the only part of the project that has changed.
    void showIpList(const IpList& list);

    QTreeView* view() const { return m_view; }
    QTreeWidget* fields() const { return m_fields; }
    QSplitter* splitter() const { return m_splitter; }
    const RecordsModel& model() const { return *m_model; }

    /// Returns the selected processors in the order of the rows.
    QList<QUuid> selectedProcessors() const;

    /// Returns the selected groups in the order of the rows.
    QList<QUuid> selectedGroups() const;

    /// Returns the group of the current row or of its processor; null for none.
    QUuid currentGroup() const;

    /// Selects these rows and scrolls to the first one.
    void select(const QList<QUuid>& ids);

signals:
    void selectionChanged();

    /// Emitted when the user has typed a value into a field of a record, one that fits the project
    /// that is shown.
    void fieldEdited(const QUuid& id, const QString& field, const QString& text);

    /// Emitted when the user has typed another address or name for an entry of the IP list.
    void ipEntryEdited(int row, const QString& address, const QString& name);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QUuid> selected(bool groups) const;
    void selectRows(const QList<QUuid>& ids);
    bool showsIpList() const;
    QUuid shownRecord() const;
    void showFields();
    void fillFields(const QList<FieldText>& texts);
    QString refusal(const QModelIndex& index, const QString& text) const;
    void edit(const QModelIndex& index, const QString& text);
    void paintHint();
    void retranslate();
    void retranslateFields();

    Project m_project;
    RecordsModel* m_model;   // Qt child
    QLabel* m_caption;       // Qt child
    QLabel* m_fieldsCaption; // Qt child
    QTreeView* m_view;       // Qt child
    QTreeWidget* m_fields;   // Qt child
    QSplitter* m_splitter;   // Qt child
    QSet<QUuid> m_closed;
    QUuid m_fieldsOf; // null while the IP list is shown
};
