#pragma once

#include <QAccessible>
#include <QStringList>

/// While one lives, hears what is announced to assistive technology. What is announced only while
/// some runs needs a test with the label "a11y". One at a time.
class Announcements final
{
public:
    Announcements()
        : m_before(QAccessible::installUpdateHandler(&Announcements::hear))
    {
        heard().clear();
    }

    ~Announcements() { QAccessible::installUpdateHandler(m_before); }

    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    /// Returns "1,2": the names of what was announced by `event`, since the last clear().
    QString of(QAccessible::Event event) const
    {
        QStringList names;
        for (const auto& [type, name] : qAsConst(heard())) {
            if (type == event)
                names.append(name);
        }
        return names.join(QLatin1Char(','));
    }

    void clear() { heard().clear(); }

private:
    using Heard = QList<QPair<QAccessible::Event, QString>>;

    static Heard& heard()
    {
        static Heard events;
        return events;
    }

    static void hear(QAccessibleEvent* event)
    {
        QAccessibleInterface* source = event->accessibleInterface();
        const bool isThere = source && source->isValid();
        heard().append({event->type(), isThere ? source->text(QAccessible::Name) : QString()});
    }

    QAccessible::UpdateHandler m_before;
};
