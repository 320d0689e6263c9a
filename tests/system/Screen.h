#pragma once

#include <QJsonObject>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

/// Something that did not happen in time; ends the day.
struct Stuck : std::runtime_error
{
    explicit Stuck(const QString& what)
        : std::runtime_error(what.toStdString())
    {
    }
};

/// What somebody looks for on the screen. What is left empty does not matter.
struct Wanted
{
    QString role;
    QString name;
    QString within; ///< Name of something that it lies in, at whatever depth.

    QString text() const;
};

/// What a screen reader says of one thing on the screen.
struct Element
{
    QString role;
    QString name;
    QString value;
    QString description;
    QStringList states;
    QRect rect;

    bool is(const QString& state) const { return states.contains(state); }
};

/// One look at the windows, as the workbench's inspector tells of them.
class Screen final
{
public:
    Screen() = default;
    explicit Screen(QJsonObject told);

    /// The first one in the foremost window that has one.
    std::optional<Element> find(const Wanted& wanted) const;

    /// Returns whether the foremost window, menus and lists aside, has the keyboard.
    bool takesKeys() const;

    /// What has the keyboard.
    std::optional<Element> focus() const;

    /// Everything, for people.
    QString dump() const;

private:
    QJsonObject m_told;
};
