#pragma once

#include "host/workbench/project/Project.h"
#include "host/workbench/window/RecordsModel.h"

#include <QSet>
#include <QWidget>

class QLabel;
class QTreeView;
class QTreeWidget;

/// The host's side of things: the project's records, and beside them every field of the chosen one;
/// the IP list when none is chosen.
class RecordsPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit RecordsPanel(QWidget* parent = nullptr);

    /// Shows `project`; selection, current row and closed groups stay as they are.
    void show(const Project& project);
    using QWidget::show;

    /// The project's IP list changed, nothing else.
    void showIpList(const IpList& list);

    QTreeView* view() const { return m_view; }
    QTreeWidget* fields() const { return m_fields; }
    const RecordsModel& model() const { return *m_model; }

    /// The selected processors, in the order of the rows.
    QList<QUuid> selectedProcessors() const;

    /// The selected groups, in the order of the rows.
    QList<QUuid> selectedGroups() const;

    /// The group of the current row: its own, or its processor's; null for none.
    QUuid currentGroup() const;

    /// Selects these rows and brings the first one in sight.
    void select(const QList<QUuid>& ids);

signals:
    void selectionChanged();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QUuid> selected(bool groups) const;
    void selectRows(const QList<QUuid>& ids);
    bool showsIpList() const;
    void showFields();
    void paintHint();
    void retranslate();
    void retranslateFields();

    Project m_project;
    RecordsModel* m_model;   // Qt child
    QLabel* m_caption;       // Qt child
    QLabel* m_fieldsCaption; // Qt child
    QTreeView* m_view;       // Qt child
    QTreeWidget* m_fields;   // Qt child
    QSet<QUuid> m_closed;
};
