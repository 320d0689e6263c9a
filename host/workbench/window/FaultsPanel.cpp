#include "host/workbench/window/FaultsPanel.h"

#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/window/FaultsModel.h"
#include "host/workbench/window/TableLook.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int kRowHeight = 24;
constexpr int kPlaceWidth = 200;
constexpr int kEffectWidth = 140;
constexpr int kCountWidth = 88;
constexpr int kEnabledWidth = 40;

/// Offers a list where a cell has choices, and a field elsewhere.
class FaultDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& index) const override
    {
        const auto* model = qobject_cast<const FaultsModel*>(index.model());
        const QStringList choices = model ? model->choices(index) : QStringList();
        if (choices.isEmpty())
            return new QLineEdit(parent);
        auto* list = new QComboBox(parent);
        list->addItems(choices);
        return list;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* list = qobject_cast<QComboBox*>(editor))
            list->setCurrentText(index.data(Qt::EditRole).toString());
        else if (auto* field = qobject_cast<QLineEdit*>(editor))
            field->setText(index.data(Qt::EditRole).toString());
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        if (auto* list = qobject_cast<QComboBox*>(editor))
            model->setData(index, list->currentText());
        else if (auto* field = qobject_cast<QLineEdit*>(editor))
            model->setData(index, field->text());
    }
};

} // namespace

FaultsPanel::FaultsPanel(ProjectStore& store, FaultPlan& plan, QWidget* parent)
    : QWidget(parent)
    , m_plan(plan)
    , m_model(new FaultsModel(store, plan, this))
    , m_view(new QTableView(this))
    , m_objection(new QLabel(this))
    , m_add(new QPushButton(this))
    , m_remove(new QPushButton(this))
    , m_restart(new QPushButton(this))
{
    m_view->setModel(m_model);
    m_view->setItemDelegate(new FaultDelegate(m_view));
    applyTableLook(*m_view, kRowHeight);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    for (int column = 0; column < FaultsModel::ColumnCount; ++column)
        m_view->setColumnWidth(column, kCountWidth);
    m_view->setColumnWidth(FaultsModel::EnabledColumn, kEnabledWidth);
    m_view->setColumnWidth(FaultsModel::PlaceColumn, kPlaceWidth);
    m_view->setColumnWidth(FaultsModel::EffectColumn, kEffectWidth);
    m_objection->setTextFormat(Qt::PlainText);
    m_objection->setProperty("hint", true);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    for (QPushButton* button : {m_add, m_remove, m_restart}) {
        button->setAutoDefault(false);
        bar->addWidget(button);
    }
    bar->addWidget(m_objection, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 8);
    layout->setSpacing(8);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);

    connect(m_add, &QPushButton::clicked, this, &FaultsPanel::add);
    connect(m_remove, &QPushButton::clicked, this, &FaultsPanel::remove);
    connect(m_restart, &QPushButton::clicked, this, [this] {
        m_plan.restart();
        m_model->showStrikes();
    });
    connect(m_model, &FaultsModel::refused, m_objection, &QLabel::setText);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FaultsPanel::updateEnabled);
    auto* removal = new QShortcut(QKeySequence(QKeySequence::Delete), m_view);
    removal->setContext(Qt::WidgetShortcut);
    connect(removal, &QShortcut::activated, this, &FaultsPanel::remove);
    updateEnabled();
    retranslate();
}

void FaultsPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void FaultsPanel::add()
{
    const int before = m_model->rowCount();
    m_model->add();
    if (m_model->rowCount() == before)
        return;
    m_view->setCurrentIndex(m_model->index(before, FaultsModel::PlaceColumn));
    m_view->setFocus();
}

void FaultsPanel::remove()
{
    m_model->remove(m_view->currentIndex().row());
}

void FaultsPanel::updateEnabled()
{
    m_remove->setEnabled(m_view->selectionModel()->hasSelection());
}

void FaultsPanel::retranslate()
{
    m_view->setAccessibleName(tr("Faults"));
    m_add->setText(tr("Add"));
    m_add->setToolTip(tr("Add a rule, switched off at first"));
    m_remove->setText(tr("Remove"));
    m_remove->setToolTip(tr("Remove the selected rule"));
    m_restart->setText(tr("Count anew"));
    m_restart->setToolTip(tr("Set the counts back, and the random numbers with them"));
    m_model->retranslate();
}
