#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <optional>

/// Something that an application presents on the accessibility bus. Asks the application each time;
/// what has gone answers with nothing.
class Heard final
{
public:
    Heard() = default;
    Heard(QString service, QString path);

    QString role() const;
    QString name() const { return property("Name"); }
    QString description() const { return property("Description"); }
    QString text() const;
    /// Returns the name of the label that labels it.
    QString label() const;
    QStringList states() const;
    bool is(const char* state) const { return states().contains(QLatin1String(state)); }
    Heard parent() const;
    QList<Heard> children() const;

    /// Returns the names of the actions, in the order of the application.
    QStringList actions() const;
    /// Has the application do the action, and does not wait until it is done: some run dialogs.
    /// Returns false when there is none of that name.
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

/// A screen reader: finds applications on the accessibility bus, looks at what they present, and
/// notes what they announce. Needs scripts/with-a11y-bus.sh around the test.
class ScreenReader final : public QObject
{
    Q_OBJECT

public:
    ScreenReader();
    ~ScreenReader() override;

    /// Returns whether it is on the bus.
    bool isListening() const;

    static QDBusConnection bus();

    /// The first thing of that role and name in the windows of the application `application`.
    static std::optional<Heard> find(const QString& application, const QString& role,
                                     const QString& name);

    /// The first one in or below `within`.
    static std::optional<Heard> findIn(const Heard& within, const QString& role,
                                       const QString& name);

    /// What was announced since forget(), in order: "focus Stage", "description Stage left".
    const QStringList& announced() const { return m_announced; }
    void forget() { m_announced.clear(); }

    /// Where the last announced focus is.
    const Heard& focus() const { return m_focus; }

private slots:
    void onStateChanged(const QDBusMessage& message);
    void onPropertyChange(const QDBusMessage& message);

private:
    QStringList m_announced;
    Heard m_focus;
};
