#include "plugin/DeviceSetSelector.h"

#include "base/LogCategories.h"
#include "base/PanelStep.h"
#include "base/TargetSelectHandler.h"

#include <QLabel>
#include <QMetaMethod>
#include <QScopeGuard>
#include <QSignalBlocker>

#include <algorithm>

namespace {

QString textOf(const SDeviceSetInfo& set)
{
    const auto handler = GetTargetSelectHandler();
    return handler ? handler->GetDeviceSetText(set) : QString();
}

/// All connections that others made to the widget's signals. Qt's own bookkeeping hears of the end
/// of objects by QObject::destroyed and has to go on doing so.
void disconnectSignals(QWidget& widget)
{
    const QMetaObject& metaObject = *widget.metaObject();
    for (int n = QObject::staticMetaObject.methodCount(); n < metaObject.methodCount(); ++n) {
        const QMetaMethod method = metaObject.method(n);
        if (method.methodType() == QMetaMethod::Signal)
            QObject::disconnect(&widget, method, nullptr, QMetaMethod());
    }
}

} // namespace

CDeviceSetSelector::CDeviceSetSelector(QWidget* parent)
    : CComboBox(parent)
{
    setTextHorizontalAlignment(Qt::AlignHCenter);
    hide();
}

/// Qt gives the chosen entry as the accessible name of a combo box on some platforms, where a label
/// beside the box names it.
void CDeviceSetSelector::setSpokenName(const QString& name)
{
    setAccessibleName(name);
    if (!m_label) {
        m_label = new QLabel(parentWidget());
        m_label->setBuddy(this);
        m_label->hide();
    }
    m_label->setText(name);
}

void CDeviceSetSelector::setDeviceSets(const GUID& current, const QList<SDeviceSetInfo>& sets)
{
    forget();
    const auto isCurrent = [&](const SDeviceSetInfo& set) { return set.id == current; };
    const auto found = std::find_if(sets.begin(), sets.end(), isCurrent);
    if (sets.size() < 2 || IsNullGuid(current) || found == sets.end()) {
        qCDebug(lcPanel, "no selector for %d device sets and this current one", sets.size());
        hide();
        return;
    }

    // The host may destroy the selector while it is asked, or announce other sets.
    const QPointer<CDeviceSetSelector> alive(this);
    const int generation = m_generation;
    QStringList texts;
    for (const SDeviceSetInfo& set : sets) {
        texts.append(textOf(set));
        if (!alive || generation != m_generation)
            return;
    }
    addItems(texts);
    m_accepted = static_cast<int>(std::distance(sets.begin(), found));
    setCurrentIndex(m_accepted);
    show();
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, sets](int index) { confirm(sets, index); });
}

/// QComboBox goes on after the signal that the question was asked in.
void CDeviceSetSelector::leaveDyingPanel()
{
    if (m_questions == 0)
        return;
    forget();
    CPanelStep::keep(this);
}

void CDeviceSetSelector::updateTexts()
{
    const auto handler = GetTargetSelectHandler();
    if (!handler)
        return;
    const QPointer<CDeviceSetSelector> alive(this);
    const int generation = m_generation;
    QStringList texts;
    const int named = handler->GetDeviceSetTexts(texts);
    if (!alive || generation != m_generation || named < 2)
        return;
    const int known = std::min({named, texts.size(), count()});
    for (int index = 0; index < known; ++index)
        setItemText(index, texts.at(index));
}

/// The list that was shown, and who listened to it.
void CDeviceSetSelector::forget()
{
    ++m_generation;
    disconnectSignals(*this);
    hidePopup();
    clear();
    m_accepted = -1;
    m_asked = -1;
}

/// The user picked entry `index`; a host that refuses gets the last accepted one back.
void CDeviceSetSelector::confirm(const QList<SDeviceSetInfo>& sets, int index)
{
    const auto handler = GetTargetSelectHandler();
    if (index < 0 || index >= sets.size() || !handler)
        return;
    // One at a time: the answers would come in the wrong order.
    if (m_asked >= 0) {
        qCInfo(lcPanel, "device set %d is not chosen: the host is asked about %d", index, m_asked);
        showQuietly(m_asked);
        return;
    }
    // The host may ask the user, and meanwhile change the device sets or destroy the selector.
    const QPointer<CDeviceSetSelector> alive(this);
    const int generation = m_generation;
    m_asked = index;
    ++m_questions;
    bool accepted = false;
    const auto end = qScopeGuard([&] {
        if (alive)
            --m_questions;
        if (!alive || generation != m_generation)
            return;
        m_asked = -1;
        if (accepted) {
            m_accepted = index;
            return;
        }
        qCInfo(lcPanel, "the host refuses device set %d", index);
        showQuietly(m_accepted);
    });
    accepted = handler->ConfirmDeviceSetChange(sets.at(index), index);
}

/// Goes back to entry `index`, of which nobody has to hear.
void CDeviceSetSelector::showQuietly(int index)
{
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}
