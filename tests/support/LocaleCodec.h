#pragma once

#include <QStringList>
#include <QTextCodec>

/// Replaces the encoding of the system while it exists.
class LocaleCodec final
{
public:
    explicit LocaleCodec(QTextCodec* codec) { QTextCodec::setCodecForLocale(codec); }
    explicit LocaleCodec(const char* name)
        : LocaleCodec(QTextCodec::codecForName(name))
    {
    }
    ~LocaleCodec() { QTextCodec::setCodecForLocale(nullptr); }
    LocaleCodec(const LocaleCodec&) = delete;
    LocaleCodec& operator=(const LocaleCodec&) = delete;
};

/// Returns those of the texts that `codec` encodes without replacing a character.
inline QStringList encodableTexts(const QStringList& texts, const QTextCodec& codec)
{
    QStringList kept;
    for (const QString& text : texts) {
        if (codec.toUnicode(codec.fromUnicode(text)) == text)
            kept.append(text);
    }
    return kept;
}
