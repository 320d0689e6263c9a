#include "tests/system/Screen.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <functional>
#include <utility>

namespace {

Element elementOf(const QJsonObject& told)
{
    Element element;
    element.role = told[QLatin1String("role")].toString();
    element.name = told[QLatin1String("name")].toString();
    element.value = told[QLatin1String("value")].toString();
    element.description = told[QLatin1String("description")].toString();
    const QJsonArray states = told[QLatin1String("states")].toArray();
    for (const QJsonValue& state : states)
        element.states.append(state.toString());
    const QJsonArray rect = told[QLatin1String("rect")].toArray();
    element.rect =
        QRect(rect.at(0).toInt(), rect.at(1).toInt(), rect.at(2).toInt(), rect.at(3).toInt());
    return element;
}

/// Shows `see` all that is wanted, front to back; ends when it answers true.
bool walk(const QJsonArray& all, const Wanted& wanted, bool isWithin,
          const std::function<bool(const Element&)>& see)
{
    for (const QJsonValue& value : all) {
        const QJsonObject told = value.toObject();
        const Element element = elementOf(told);
        const bool fits = (wanted.role.isEmpty() || wanted.role == element.role)
                          && (wanted.name.isEmpty() || wanted.name == element.name);
        if (isWithin && fits && see(element))
            return true;
        const bool below = isWithin || element.name == wanted.within;
        if (walk(told[QLatin1String("children")].toArray(), wanted, below, see))
            return true;
    }
    return false;
}

} // namespace

QString Wanted::text() const
{
    QString text = QStringLiteral("%1 \"%2\"").arg(role, name);
    if (!within.isEmpty())
        text += QStringLiteral(" within \"%1\"").arg(within);
    return text;
}

Screen::Screen(QJsonObject told)
    : m_told(std::move(told))
{
}

std::optional<Element> Screen::find(const Wanted& wanted) const
{
    std::optional<Element> found;
    walk(m_told[QLatin1String("windows")].toArray(), wanted, wanted.within.isEmpty(),
         [&found](const Element& element) {
             found = element;
             return true;
         });
    return found;
}

std::optional<Element> Screen::focus() const
{
    const QJsonValue told = m_told[QLatin1String("focus")];
    return told.isObject() ? std::make_optional(elementOf(told.toObject())) : std::nullopt;
}

bool Screen::takesKeys() const
{
    const QJsonArray windows = m_told[QLatin1String("windows")].toArray();
    for (const QJsonValue& value : windows) {
        const Element window = elementOf(value.toObject());
        const auto isA = [&](const char* role) { return window.role == QLatin1String(role); };
        if (isA("Window") || isA("Dialog") || isA("AlertMessage"))
            return window.is(QStringLiteral("active"));
    }
    return false;
}

QString Screen::dump() const
{
    return QString::fromUtf8(QJsonDocument(m_told).toJson());
}
