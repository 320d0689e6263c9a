#pragma once

#include <QWidget>

class FaultPlan;
class FaultsModel;
class ProjectStore;
class QLabel;
class QPushButton;
class QTableView;

/// The list of the rules by which the host makes faults, which can be edited in place.
class FaultsPanel final : public QWidget
{
    Q_OBJECT

public:
    /// `store` and `plan` must outlive the panel.
    FaultsPanel(ProjectStore& store, FaultPlan& plan, QWidget* parent = nullptr);

    QTableView* view() const { return m_view; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void add();
    void remove();
    void updateEnabled();
    void retranslate();

    FaultPlan& m_plan;
    FaultsModel* m_model;   // Qt child
    QTableView* m_view;     // Qt child
    QLabel* m_objection;    // Qt child
    QPushButton* m_add;     // Qt child
    QPushButton* m_remove;  // Qt child
    QPushButton* m_restart; // Qt child
};
