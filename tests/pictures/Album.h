#pragma once

#include <QImage>
#include <QMap>
#include <QSet>
#include <QString>

class QPixmap;
class QWidget;

/// Pictures of the panel, by names such as "tree/selected".
class Album final
{
public:
    /// Keeps only the pictures that are named; all if none is.
    explicit Album(QSet<QString> wanted = {});

    /// Makes `subject` the first part of the names that follow. Returns false if none of its
    /// pictures is wanted.
    bool begin(const QString& subject);

    /// Saves `widget` once no event waits, and over it as much of `popup` as it leaves room for.
    void save(const char* name, QWidget& widget, QWidget* popup = nullptr);

    void save(const char* name, const QPixmap& picture);

    const QMap<QString, QImage>& pictures() const { return m_pictures; }

private:
    QSet<QString> m_wanted;
    QString m_subject;
    QMap<QString, QImage> m_pictures;
};

/// Pins the fonts and the scale that pictures are taken with. Call it before there is an
/// application; a scale of 0 leaves the scale as it is.
void preparePictures(int scale);

/// Takes pictures of the panel in the host's look, in the language "en" or "zh_CN". GUI thread.
Album takePictures(const QString& language, const QSet<QString>& wanted);
