#include "host/workbench/window/FaultsModel.h"

#include "Interface/HostEvents.h"
#include "host/workbench/events/EventNumber.h"
#include "host/workbench/faults/FaultPlan.h"
#include "host/workbench/project/ProjectRanges.h"
#include "host/workbench/store/ProjectStore.h"

#include <algorithm>

namespace {

/// Chooses the first effect that is possible at the place of `rule`, if its own is not.
void fitEffect(FaultRule& rule)
{
    const auto problem = checkFaultRule(rule);
    if (!problem || qstrcmp(problem->field, "effect") != 0)
        return;
    for (const FaultEffect effect : allFaultEffects()) {
        rule.effect = effect;
        if (!checkFaultRule(rule))
            return;
    }
}

} // namespace

FaultsModel::FaultsModel(ProjectStore& store, FaultPlan& plan, QObject* parent)
    : QAbstractTableModel(parent)
    , m_store(store)
    , m_plan(plan)
{
    connect(&store, &ProjectStore::changed, this, &FaultsModel::show);
    connect(&plan, &FaultPlan::struck, this, &FaultsModel::showStrikes);
    show();
}

int FaultsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rules.size();
}

int FaultsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FaultsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FaultRule& rule = m_rules.at(index.row());
    if (role == Qt::CheckStateRole && index.column() == EnabledColumn)
        return rule.enabled ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::AccessibleTextRole && index.column() == EnabledColumn)
        return headerData(EnabledColumn, Qt::Horizontal);
    if (role == Qt::ToolTipRole)
        return faultText(rule).toHtmlEscaped();
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    switch (index.column()) {
    case PlaceColumn:
        return rule.at;
    case CallColumn:
        return rule.call > 0 || role == Qt::EditRole ? QVariant(rule.call) : tr("any");
    case ProbabilityColumn:
        return static_cast<double>(rule.probability);
    case SeedColumn:
        return rule.seed;
    case EffectColumn:
        return faultEffectName(rule.effect);
    case TimeColumn:
        return faultEffectHasTime(rule.effect) || role == Qt::EditRole ? QVariant(rule.milliseconds)
                                                                       : QVariant();
    case StruckColumn:
        return m_strikes.value(index.row());
    default:
        return {};
    }
}

QVariant FaultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case EnabledColumn:
        return tr("On");
    case PlaceColumn:
        return tr("At");
    case CallColumn:
        return tr("Call");
    case ProbabilityColumn:
        return tr("Probability");
    case SeedColumn:
        return tr("Seed");
    case EffectColumn:
        return tr("Effect");
    case TimeColumn:
        return tr("Milliseconds");
    case StruckColumn:
        return tr("Struck");
    default:
        return {};
    }
}

Qt::ItemFlags FaultsModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags shown = QAbstractTableModel::flags(index);
    if (index.column() == EnabledColumn)
        return shown | Qt::ItemIsUserCheckable;
    return index.column() == StruckColumn ? shown : shown | Qt::ItemIsEditable;
}

bool FaultsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    FaultRule rule = m_rules.at(index.row());
    bool isRead = true;
    switch (index.column()) {
    case EnabledColumn:
        isRead = role == Qt::CheckStateRole;
        rule.enabled = value.toInt() == Qt::Checked;
        break;
    case PlaceColumn:
        rule.at = value.toString().simplified();
        fitEffect(rule);
        break;
    case CallColumn:
        rule.call = value.toInt(&isRead);
        break;
    case ProbabilityColumn:
        rule.probability = value.toFloat(&isRead);
        break;
    case SeedColumn:
        rule.seed = value.toUInt(&isRead);
        break;
    case EffectColumn:
        rule.effect = faultEffectOfName(value.toString()).value_or(rule.effect);
        break;
    case TimeColumn:
        rule.milliseconds = value.toInt(&isRead);
        break;
    default:
        return false;
    }
    const auto problem = checkFaultRule(rule);
    if (!isRead || problem) {
        emit refused(isRead ? problem->reason : tr("%1 is no number").arg(value.toString()));
        return false;
    }
    emit refused({});
    QList<FaultRule> rules = m_rules;
    rules[index.row()] = rule;
    if (rules != m_rules)
        m_store.setFaults(rules);
    return true;
}

void FaultsModel::add()
{
    if (m_rules.size() >= ProjectRanges::kMaxFaults) {
        emit refused(tr("There are %1 rules already, and no more are possible.")
                         .arg(ProjectRanges::kMaxFaults));
        return;
    }
    FaultRule rule;
    rule.at = QStringLiteral("GetProcessorNode");
    rule.call = 1;
    rule.enabled = false;
    m_store.setFaults(m_rules + QList<FaultRule>{rule});
}

void FaultsModel::remove(int row)
{
    QList<FaultRule> rules = m_rules;
    if (row < 0 || row >= rules.size())
        return;
    rules.removeAt(row);
    m_store.setFaults(rules);
}

QStringList FaultsModel::choices(const QModelIndex& index) const
{
    QStringList choices;
    if (index.column() == PlaceColumn) {
        for (const Operations::Operation& operation : Operations::kOperations)
            choices.append(QLatin1String(operation.name));
        choices.sort();
        choices.prepend(QStringLiteral("event *"));
        choices.prepend(QStringLiteral("*"));
        for (quint32 number = 0; number <= HostEvents::kLastNumber; ++number) {
            if (EventNumber::isKnown(number))
                choices.append(QStringLiteral("event %1").arg(number));
        }
    } else if (index.column() == EffectColumn && index.row() < m_rules.size()) {
        FaultRule rule = m_rules.at(index.row());
        for (const FaultEffect effect : allFaultEffects()) {
            rule.effect = effect;
            if (!checkFaultRule(rule))
                choices.append(faultEffectName(effect));
        }
    }
    return choices;
}

void FaultsModel::showStrikes()
{
    const QList<qint64> strikes = m_plan.strikes();
    if (strikes == m_strikes)
        return;
    m_strikes = strikes;
    if (!m_rules.isEmpty())
        emit dataChanged(index(0, StruckColumn), index(m_rules.size() - 1, StruckColumn));
}

void FaultsModel::retranslate()
{
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (!m_rules.isEmpty())
        emit dataChanged(index(0, 0), index(m_rules.size() - 1, ColumnCount - 1));
}

/// Shows the rules of the project. A row keeps its place, so that its editor stays open.
void FaultsModel::show()
{
    const QList<FaultRule> rules =
        m_store.read([](const Project& project) { return project.faults; });
    if (rules == m_rules)
        return;
    const int kept = std::min(rules.size(), m_rules.size());
    if (rules.size() < m_rules.size()) {
        beginRemoveRows({}, rules.size(), m_rules.size() - 1);
        m_rules = rules;
        endRemoveRows();
    } else if (rules.size() > m_rules.size()) {
        beginInsertRows({}, m_rules.size(), rules.size() - 1);
        m_rules = rules;
        endInsertRows();
    } else {
        m_rules = rules;
    }
    if (kept > 0)
        emit dataChanged(index(0, 0), index(kept - 1, ColumnCount - 1));
    showStrikes();
}
