#include "Interface/HostRequests.h"
#include "base/ContractCheck.h"
#include "tests/support/WarningTrap.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>

namespace {

QString page(const char* name)
{
    QFile file(QStringLiteral(TSA_DOCS "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QList<ContractCheck::Finding> allFindings()
{
    QList<ContractCheck::Finding> all;
    for (int number = 1; number <= ContractCheck::kFindings; ++number)
        all.append(static_cast<ContractCheck::Finding>(number));
    return all;
}

} // namespace

/// What the docs say of the contract checks is what the checks say.
class TestDiagnosticsPage final : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveEachCodeOnce();
    void shouldHaveAParagraphForEachCode();
    void shouldNameUsualMistakesThatAreTested();
    void shouldShowWhatFollowsEachRequest();
};

void TestDiagnosticsPage::shouldGiveEachCodeOnce()
{
    QSet<QString> codes;
    for (const auto finding : allFindings()) {
        const QString code = ContractCheck::code(finding);
        QVERIFY2(QRegularExpression(QStringLiteral("^TSA-[EW]\\d\\d$")).match(code).hasMatch(),
                 qPrintable(code));
        QVERIFY(code.endsWith(
            QStringLiteral("%1").arg(static_cast<int>(finding), 2, 10, QLatin1Char('0'))));
        codes.insert(code);
    }
    QCOMPARE(codes.size(), ContractCheck::kFindings);
}

void TestDiagnosticsPage::shouldHaveAParagraphForEachCode()
{
    const QStringList sections = page("diagnostics.md").split(QStringLiteral("\n### "));
    QCOMPARE(sections.size(), ContractCheck::kFindings + 1);
    for (const auto finding : allFindings()) {
        const QString head = QStringLiteral("%1 %2\n").arg(ContractCheck::code(finding),
                                                           ContractCheck::title(finding));
        const QString& section = sections.at(static_cast<int>(finding));
        QVERIFY2(section.startsWith(head), qPrintable(head));
        QVERIFY2(section.contains(QStringLiteral("Cause: ")), qPrintable(head));
        QVERIFY2(section.contains(QStringLiteral("Remedy: ")), qPrintable(head));
    }
}

void TestDiagnosticsPage::shouldNameUsualMistakesThatAreTested()
{
    QString tests;
    const QDir folder(QStringLiteral(TSA_CONTRACT_TESTS));
    for (const QString& name : folder.entryList({QStringLiteral("tst_contract*.cpp")})) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        tests += QString::fromUtf8(file.readAll());
    }
    const QStringList rows = page("diagnostics.md")
                                 .section(QStringLiteral("## Usual mistakes\n"), 1)
                                 .section(QStringLiteral("\n## "), 0, 0)
                                 .split(QLatin1Char('\n'))
                                 .filter(QStringLiteral("TSA-"));
    QVERIFY2(rows.size() >= 20, qPrintable(QString::number(rows.size())));
    QSet<QString> named;
    for (const QString& row : rows) {
        const auto match =
            QRegularExpression(QStringLiteral("\\[(TSA-...)\\]\\([^)]*\\) (.*) \\|$")).match(row);
        QVERIFY2(match.hasMatch(), qPrintable(row));
        const QString code = match.captured(1);
        const auto all = allFindings();
        QVERIFY2(std::any_of(all.begin(), all.end(),
                             [&](ContractCheck::Finding finding) {
                                 return ContractCheck::code(finding) == code
                                        && ContractCheck::title(finding) == match.captured(2);
                             }),
                 qPrintable(row));
        QVERIFY2(tests.contains(QStringLiteral("QStringLiteral(\"%1\")").arg(code)),
                 qPrintable(code + QStringLiteral(" is not provoked by a test")));
        QVERIFY2(!named.contains(code), qPrintable(code));
        named.insert(code);
    }
}

void TestDiagnosticsPage::shouldShowWhatFollowsEachRequest()
{
    const QString text = page("integrating.md");
    for (const auto& request : HostRequests::kRequests) {
        const QString events = HostRequests::eventNumbers(request);
        const QStringList cells{
            QStringLiteral("`%1`").arg(QLatin1String(request.operation)),
            QLatin1String(request.thread),
            events.isEmpty() ? QStringLiteral("none") : events,
            QLatin1String(request.order),
            QLatin1String(request.outcome),
            QLatin1String(request.refusal),
            QLatin1String(request.untilThen),
        };
        const QString row = QStringLiteral("\n| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
        QVERIFY2(text.contains(row), qPrintable(row));
    }
}

TSA_APPLESS_TEST_MAIN(TestDiagnosticsPage)

#include "tst_diagnosticspage.moc"
