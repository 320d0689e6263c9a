#pragma once

#include "host/workbench/project/FaultRule.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

class FaultPlan;
class ProjectStore;

/// The rules by which the host makes faults, a row each. Edits go to the project; one that is wrong
/// is refused.
class FaultsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        EnabledColumn,
        PlaceColumn,
        CallColumn,
        ProbabilityColumn,
        SeedColumn,
        EffectColumn,
        TimeColumn,
        StruckColumn,
        ColumnCount
    };

    /// `store` and `plan` must outlive the model.
    FaultsModel(ProjectStore& store, FaultPlan& plan, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /// Adds a rule that is switched off, for the user to fill in.
    void add();
    void remove(int row);

    /// Returns what a cell may hold, for a list to choose from; empty if it is typed.
    QStringList choices(const QModelIndex& index) const;

    /// Shows how often each rule has struck by now.
    void showStrikes();

    /// Updates the texts after a change of the language.
    void retranslate();

signals:
    /// Emitted when an edit is refused, with the reason, and with an empty text when one is taken.
    void refused(const QString& reason);

private:
    void show();

    ProjectStore& m_store;
    FaultPlan& m_plan;
    QList<FaultRule> m_rules;
    QList<qint64> m_strikes;
};
