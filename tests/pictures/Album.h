#pragma once

#include <QString>

#include <functional>

class QPixmap;
class QWidget;

/// A folder of pictures for the documentation, whose files all end in the same suffix.
class Album final
{
public:
    Album(QString folder, QString suffix);

    /// `widget` once no event waits, and over it as much of `popup` as it leaves room for.
    void save(const char* name, QWidget& widget, QWidget* popup = nullptr);

    void save(const char* name, const QPixmap& picture);

    /// Whether a picture could not be written.
    bool failed() const { return m_failed; }

private:
    QString m_folder;
    QString m_suffix;
    bool m_failed = false;
};

/// The whole of a program's main(): has `take` fill the album that the command line FOLDER LANGUAGE
/// SUFFIX names, in the host's look and in that language, "en" or "zh_CN". Returns the exit code.
int takePictures(int argc, char** argv, const std::function<void(Album&)>& take);
