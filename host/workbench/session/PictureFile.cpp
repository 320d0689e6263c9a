#include "host/workbench/session/PictureFile.h"

#include "host/workbench/session/OwnFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <QSaveFile>

namespace {

struct PictureFileMessages
{
    Q_DECLARE_TR_FUNCTIONS(PictureFile)
};

QString ownerKey()
{
    return QStringLiteral("Software");
}

QString owner()
{
    return QStringLiteral("TargetSelectArea workbench");
}

bool isOurs(const QString& path)
{
    return QImageReader(path, "png").text(ownerKey()) == owner();
}

} // namespace

bool savePicture(const QPixmap& picture, const QString& path, QString& problem)
{
    const QString shown = QDir::toNativeSeparators(path);
    if (!isFree(path, [&] { return isOurs(path); })) {
        problem = PictureFileMessages::tr(
                      "%1 cannot be written: what is there is not a picture of the workbench")
                      .arg(shown);
        return false;
    }
    QImage image = picture.toImage();
    image.setText(ownerKey(), owner());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit())
        return true;
    problem = PictureFileMessages::tr("%1 cannot be written: %2").arg(shown, file.errorString());
    return false;
}
