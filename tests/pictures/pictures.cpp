// Takes pictures of the panel: pictures FOLDER LANGUAGE [SUFFIX [NAME...]]
//
// Saves FOLDER/NAME-LANGUAGE+SUFFIX.png for each NAME such as tree/selected, or for all that there
// are. LANGUAGE is "en" or "zh_CN".

#include "tests/pictures/Album.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <iostream>

int main(int argc, char** argv)
{
    preparePictures(0);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::cerr << "usage: pictures FOLDER LANGUAGE [SUFFIX [NAME...]]\n";
        return 2;
    }
    const QStringList names = arguments.mid(4);
    const QString& language = arguments.at(2);
    const Album album = takePictures(language, QSet<QString>(names.begin(), names.end()));
    const QMap<QString, QImage>& pictures = album.pictures();
    for (const QString& name : names) {
        if (!pictures.contains(name)) {
            std::cerr << "there is no picture " << qPrintable(name) << '\n';
            return 1;
        }
    }
    for (auto it = pictures.begin(); it != pictures.end(); ++it) {
        const QString file = QStringLiteral("%1/%2-%3%4.png")
                                 .arg(arguments.at(1), it.key(), language, arguments.value(3));
        if (!QDir().mkpath(QFileInfo(file).path()) || !it.value().save(file)) {
            std::cerr << "cannot write " << qPrintable(file) << '\n';
            return 1;
        }
    }
    return 0;
}
