#pragma once

#include <QJsonObject>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

/// Thrown if an expected state is not reached in time; ends the test.
struct Stuck : std::runtime_error
{
    explicit Stuck(const QString& what)
        : std::runtime_error(what.toStdString())
    {
    }
};

/// Describes an element that a user looks for. An empty field matches anything.
struct Wanted
{
    QString role;
    QString name;
    QString within; ///< Name of an ancestor, at any depth.

    QString text() const;
};

/// A visible element as a screen reader describes it.
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

/// The visible windows at one moment, as the inspector of the workbench describes them.
class Screen final
{
public:
    Screen() = default;
    explicit Screen(QJsonObject told);

    /// Returns the first such element, from the frontmost window that has one.
    std::optional<Element> find(const Wanted& wanted) const;

    /// Returns whether the frontmost window, apart from menus and lists, is active.
    bool takesKeys() const;

    /// Returns the element that has the focus.
    std::optional<Element> focus() const;

    /// Returns all elements as readable text.
    QString dump() const;

private:
    QJsonObject m_told;
};
