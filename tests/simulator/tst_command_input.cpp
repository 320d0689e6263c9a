#include "host/simulator/CommandInput.h"
#include "tests/support/WarningTrap.h"

#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// A pipe, from whose end a CommandInput reads.
class Pipe final
{
public:
    explicit Pipe(int flags = 0)
    {
        if (pipe2(m_ends, O_CLOEXEC | flags) != 0)
            QTest::qFail("no pipe", __FILE__, __LINE__);
    }

    ~Pipe()
    {
        end();
        close(m_ends[0]);
    }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int readEnd() const { return m_ends[0]; }

    void write(const QByteArray& bytes)
    {
        if (::write(m_ends[1], bytes.constData(), static_cast<size_t>(bytes.size()))
            != bytes.size())
            QTest::qFail("not written", __FILE__, __LINE__);
    }

    void end()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    int m_ends[2] = {-1, -1};
};

} // namespace

/// What the input tells of lines and of its end.
class CommandInputTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTakeALastLineWithoutLineEnd_data();
    void shouldTakeALastLineWithoutLineEnd();
    void shouldWaitOnADescriptorThatDoesNotBlock();
};

void CommandInputTest::shouldTakeALastLineWithoutLineEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("nothing") << QByteArray() << QStringList();
    QTest::newRow("ended line") << QByteArray("list\n") << QStringList{QStringLiteral("list")};
    QTest::newRow("pending line") << QByteArray("help\nlist")
                                  << QStringList{QStringLiteral("help"), QStringLiteral("list")};
    QTest::newRow("pending long line")
        << QByteArray(5000, 'x') << QStringList{QStringLiteral("(a line that is too long)")};
}

void CommandInputTest::shouldTakeALastLineWithoutLineEnd()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    Pipe pipe;
    CommandInput input(pipe.readEnd());
    QStringList lines;
    connect(&input, &CommandInput::lineRead, this,
            [&](const QString& line) { lines.append(line); });
    QSignalSpy ended(&input, &CommandInput::ended);
    pipe.write(bytes);
    pipe.end();
    QVERIFY(ended.wait());
    QCOMPARE(lines, expected);
}

/// Many lines: it is up to the system which of them the thread waits for.
void CommandInputTest::shouldWaitOnADescriptorThatDoesNotBlock()
{
    Pipe pipe(O_NONBLOCK);
    CommandInput input(pipe.readEnd());
    QSignalSpy lines(&input, &CommandInput::lineRead);
    QSignalSpy ended(&input, &CommandInput::ended);
    for (int count = 0; count < 200; ++count) {
        pipe.write("list\n");
        QVERIFY(lines.wait());
        QVERIFY(ended.isEmpty());
    }
    pipe.end();
    QVERIFY(ended.wait());
}

TSA_GUILESS_TEST_MAIN(CommandInputTest)

#include "tst_command_input.moc"
