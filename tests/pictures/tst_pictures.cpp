// Compares the panel in some of its states with reference pictures, so that no look changes unseen.

#include "tests/pictures/Album.h"
#include "tests/pictures/Comparison.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QColor>
#include <QDir>
#include <QDirIterator>
#include <QPainter>
#include <QTest>

class PicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldLookAsTheReference_data();
    void shouldLookAsTheReference();
    void shouldNoticeAChange_data();
    void shouldNoticeAChange();
    void shouldPassOverAntialiasing();

private:
    QMap<QString, QImage> m_seen; // by the name of the reference
    QStringList m_references;
};

namespace {

QImage sample()
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(QColor(30, 30, 33));
    QPainter painter(&picture);
    painter.fillRect(20, 20, 120, 24, QColor(45, 66, 115));
    painter.setPen(QColor(200, 200, 205));
    painter.drawLine(0, 60, 199, 60);
    painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    painter.drawText(24, 37, QStringLiteral("Stage 1"));
    return picture;
}

/// What is drawn over the sample, and where.
struct Change
{
    QRect place;
    QColor color;
};

} // namespace

Q_DECLARE_METATYPE(Change)

void PicturesTest::initTestCase()
{
    const QDir folder(QStringLiteral(PICTURE_REFERENCES));
    QDirIterator files(folder.path(), {QStringLiteral("*.png")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        m_references.append(folder.relativeFilePath(files.next()).chopped(4));
    m_references.sort();
    QVERIFY(!m_references.isEmpty());
    for (const char* language : {"en", "zh_CN"}) {
        const QString ending = QLatin1Char('-') + QLatin1String(language);
        QSet<QString> wanted;
        for (const QString& reference : qAsConst(m_references)) {
            if (reference.endsWith(ending))
                wanted.insert(reference.chopped(ending.size()));
        }
        QVERIFY(!wanted.isEmpty());
        const Album album = takePictures(QLatin1String(language), wanted);
        for (auto it = album.pictures().begin(); it != album.pictures().end(); ++it)
            m_seen.insert(it.key() + ending, it.value());
    }
}

void PicturesTest::shouldLookAsTheReference_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& reference : qAsConst(m_references))
        QTest::newRow(qPrintable(reference)) << reference;
}

void PicturesTest::shouldLookAsTheReference()
{
    QFETCH(QString, name);
    const QImage reference(QStringLiteral(PICTURE_REFERENCES "/%1.png").arg(name));
    const QImage seen = m_seen.value(name);
    QVERIFY2(!seen.isNull(), "nothing takes this picture any more; remove the reference");
    const PictureDifference difference = comparePictures(seen, reference);
    if (difference.isNegligible())
        return;
    const QDir folder(QStringLiteral(PICTURE_FAILURES));
    const QString file = QString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    QVERIFY(seen.save(folder.filePath(file + QStringLiteral("-seen.png"))));
    QVERIFY(difference.marked.save(folder.filePath(file + QStringLiteral("-difference.png"))));
    QFAIL(
        qPrintable(QStringLiteral("%1 of %2 pixels differ, %3 of them by more than their "
                                  "antialiasing; see %4/%5-*.png. If the look is meant to change, "
                                  "run: scripts/pictures.sh --references")
                       .arg(difference.changed)
                       .arg(seen.width() * seen.height())
                       .arg(difference.foreign)
                       .arg(folder.path(), file)));
}

void PicturesTest::shouldNoticeAChange_data()
{
    QTest::addColumn<Change>("change");
    const QColor window(30, 30, 33);
    QTest::newRow("a line gone") << Change{{0, 60, 200, 1}, window};
    QTest::newRow("a surface a little lighter") << Change{{20, 70, 100, 20}, {36, 36, 39}};
    QTest::newRow("a text gone") << Change{{24, 22, 60, 20}, {45, 66, 115}};
    QTest::newRow("a surface larger by a pixel all round") << Change{{19, 19, 122, 26}, window};
    QTest::newRow("a small mark") << Change{{180, 10, 4, 4}, {224, 90, 90}};
}

void PicturesTest::shouldNoticeAChange()
{
    QFETCH(Change, change);
    QImage changed = sample();
    QPainter(&changed).fillRect(change.place, change.color);
    QVERIFY(!comparePictures(changed, sample()).isNegligible());
    QVERIFY(!comparePictures(sample(), changed).isNegligible());
    QVERIFY(!comparePictures(sample().copy(0, 0, 199, 100), sample()).isNegligible());
}

void PicturesTest::shouldPassOverAntialiasing()
{
    // The edges of the surface take colours between those of their two sides.
    QImage other = sample();
    QPainter(&other).fillRect(140, 20, 1, 24, QColor(35, 42, 60));
    const PictureDifference difference = comparePictures(other, sample());
    QCOMPARE(difference.changed, 24);
    QCOMPARE(difference.foreign, 0);
    QVERIFY(difference.isNegligible());
    QVERIFY(comparePictures(sample(), sample()).isNegligible());
}

int main(int argc, char** argv)
{
    preparePictures(1);
    QApplication application(argc, argv);
    PicturesTest test;
    return runTests(test, argc, argv);
}

#include "tst_pictures.moc"
