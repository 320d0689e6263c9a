#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <optional>

/// An accessible object of an application on the accessibility bus. Asks the application in each
/// call; for an object that no longer exists the results are empty.
class Heard final
{
public:
    Heard() = default;
    Heard(QString service, QString path);

    QString role() const;
    QString name() const { return property("Name"); }
    QString description() const { return property("Description"); }
    QString text() const;
    /// Returns the name of the label of the object.
    QString label() const;
    QStringList states() const;
    bool is(const char* state) const { return states().contains(QLatin1String(state)); }
    Heard parent() const;
    QList<Heard> children() const;

    /// Returns the names of the actions in the order of the application.
    QStringList actions() const;
    /// Starts an action. Does not wait until it is finished, because some actions run dialogs.
    /// Returns false if there is no action of that name.
    bool act(const char* action) const;

private:
    QDBusMessage call(const char* interface, const char* method,
                      const QVariantList& arguments) const;
    QVariant ask(const char* interface, const char* method,
                 const QVariantList& arguments = {}) const;
    QString property(const char* name) const;

    QString m_service;
    QString m_path;
};

/// A screen reader: finds applications and their objects on the accessibility bus, and records what
/// they announce. The test has to run inside scripts/with-a11y-bus.sh.
class ScreenReader final : public QObject
{
    Q_OBJECT

public:
    ScreenReader();
    ~ScreenReader() override;

    /// Returns whether the reader is connected to the bus.
    bool isListening() const;

    static QDBusConnection bus();

    /// Returns the first object of that role and name in the windows of `application`.
    static std::optional<Heard> find(const QString& application, const QString& role,
                                     const QString& name);

    /// Returns the first such object in or below `within`.
    static std::optional<Heard> findIn(const Heard& within, const QString& role,
                                       const QString& name);

    /// Returns the announcements since forget(), in order: "focus Stage", "description Stage left".
    const QStringList& announced() const { return m_announced; }
    void forget() { m_announced.clear(); }

    /// Returns the object of the last announced focus.
    const Heard& focus() const { return m_focus; }

private slots:
    void onStateChanged(const QDBusMessage& message);
    void onPropertyChange(const QDBusMessage& message);

private:
    QStringList m_announced;
    Heard m_focus;
};
