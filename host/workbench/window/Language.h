#pragma once

#include <QObject>
#include <QTranslator>

#include <memory>
#include <vector>

/// The application's language, changed while it runs: the translations of Qt's own texts, of the
/// host's widgets, of the panel's library, which brings its own along, and of the workbench. GUI
/// thread.
class Language final : public QObject
{
    Q_OBJECT

public:
    enum class Choice { English, Chinese };

    explicit Language(QObject* parent = nullptr);
    ~Language() override;

    Choice choice() const { return m_choice; }

    /// Changes the language; every widget gets a language change event. Choosing the language in
    /// use again takes up translations that a library loaded since then has brought.
    void choose(Choice choice);

private:
    void install(const QString& file, const QString& folder);

    Choice m_choice = Choice::English;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};
