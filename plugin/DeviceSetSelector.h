#pragma once

#include "Interface/DeviceSetInfo.h"
#include "host/widgets/ComboBox.h"

#include <QList>
#include <QPointer>

class QLabel;

/// Shows the host's device sets and has the user pick another one, which the host may refuse; it is
/// asked about one at a time. There only while there is a choice. GUI thread; the host may destroy
/// it, or name other sets, whenever it is asked.
class CDeviceSetSelector final : public CComboBox
{
    Q_OBJECT

public:
    explicit CDeviceSetSelector(QWidget* parent = nullptr);

    /// Sets the name by which assistive technology calls the selector. Needs a parent.
    void setSpokenName(const QString& name);

    /// Offers `sets` with `current` chosen. Hidden and empty with fewer than two sets, with an
    /// all-zero `current` and with one that is none of them.
    void setDeviceSets(const GUID& current, const QList<SDeviceSetInfo>& sets);

    /// Parts from a panel that is being destroyed. Inside a question to the host the selector lives
    /// on, hidden, until its own code has returned.
    void leaveDyingPanel();

    /// Sets the texts as the host has them now, in the order of the sets.
    void updateTexts();

private:
    void forget();
    void confirm(const QList<SDeviceSetInfo>& sets, int index);
    void showQuietly(int index);

    QPointer<QLabel> m_label; // never shown; child of the parent
    int m_accepted = -1;      // the entry that a refused choice goes back to
    int m_asked = -1;     // the entry that the host is asked about; another choice goes back to it
    int m_generation = 0; // which list of device sets is shown
    int m_questions = 0;  // to the host, nested, about a choice
};
