#pragma once

#include <QObject>
#include <QTranslator>

#include <memory>
#include <vector>

/// Changes the language of the running application. Installs the translations of Qt, of the host's
/// widgets, of the panel (which its library contains) and of the workbench. GUI thread.
class Language final : public QObject
{
    Q_OBJECT

public:
    enum class Choice { English, Chinese };

    explicit Language(QObject* parent = nullptr);
    ~Language() override;

    Choice choice() const { return m_choice; }

    /// Changes the language; every widget gets a language change event. Choosing the current
    /// language again installs the translations of libraries that were loaded in the meantime.
    void choose(Choice choice);

private:
    void install(const QString& file, const QString& folder);

    Choice m_choice = Choice::English;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};
