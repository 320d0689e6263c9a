#pragma once

class QPixmap;
class QString;

/// Saves a picture of the workbench as a PNG file, which says whose it is: only such a file is
/// replaced. On failure, or if anything else is there, returns false and sets `problem`.
bool savePicture(const QPixmap& picture, const QString& path, QString& problem);
