#include "Interface/HostRequests.h"
#include "base/ContractCheck.h"
#include "tests/support/WarningTrap.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

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
