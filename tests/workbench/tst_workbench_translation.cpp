#include "tests/support/WarningTrap.h"

#include <QFile>
#include <QTest>
#include <QXmlStreamReader>

namespace {

int count(const QString& text, QLatin1Char character)
{
    return text.count(character);
}

} // namespace

class WorkbenchTranslationTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldBeCompleteAndKeepPlaceMarks();
};

void WorkbenchTranslationTest::shouldBeCompleteAndKeepPlaceMarks()
{
    QFile file(QStringLiteral(WORKBENCH_TRANSLATION));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QString source;
    int translated = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("source"))
            source = reader.readElementText();
        if (reader.name() != QLatin1String("translation"))
            continue;
        QVERIFY2(!reader.attributes().hasAttribute(QStringLiteral("type")), qPrintable(source));
        const QString text = reader.readElementText();
        QVERIFY2(!text.isEmpty(), qPrintable(source));
        for (const auto place : {QLatin1Char('%'), QLatin1Char('&'), QLatin1Char('\n')})
            QVERIFY2(count(text, place) == count(source, place), qPrintable(source));
        ++translated;
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QVERIFY2(translated > 150, qPrintable(QString::number(translated)));
}

TSA_GUILESS_TEST_MAIN(WorkbenchTranslationTest)
#include "tst_workbench_translation.moc"
