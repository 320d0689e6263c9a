#include "host/workbench/window/Language.h"

#include "host/workbench/window/Resources.h"

#include <QCoreApplication>
#include <QLibraryInfo>

Language::Language(QObject* parent)
    : QObject(parent)
{
    initWorkbenchResources();
}

Language::~Language() = default;

void Language::choose(Choice choice)
{
    m_choice = choice;
    m_translators.clear();
    if (choice == Choice::English)
        return;
    install(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("HostWidgets_zh_CN"), QStringLiteral(":/HostWidgets/translations"));
    install(QStringLiteral("TargetSelectArea_zh_CN"),
            QStringLiteral(":/TargetSelectArea/translations"));
    install(QStringLiteral("Workbench_zh_CN"), QStringLiteral(":/Workbench/translations"));
}

/// Skips a missing file: Qt's own translation is not installed on every machine, and the panel's is
/// there only after its library is loaded.
void Language::install(const QString& file, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(file, folder))
        return;
    QCoreApplication::installTranslator(translator.get());
    m_translators.push_back(std::move(translator));
}
