// The simulated receiver as a process of its own, spoken to through its pseudo-terminals as a program would.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <set>

#include "SentenceReader.h"

namespace {

constexpr int Patience = 20000;  // milliseconds until a wait is given up

// One end of a serial line, opened by its link.
class Line {
public:
    explicit Line(const QString& sLink) : m_iHandle(::open(sLink.toLocal8Bit().constData(), O_RDWR | O_NOCTTY)) {}
    ~Line() { ::close(m_iHandle); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    bool IsOpen() const { return m_iHandle >= 0; }
    void Write(const std::string& s) const { QVERIFY(::write(m_iHandle, s.data(), s.size()) == ssize_t(s.size())); }
    // The next line with its line end; empty when none comes.
    std::string Next() {
        const QDeadlineTimer tDeadline(Patience);
        std::size_t iEnd = std::string::npos;
        while ((iEnd = m_sBuffer.find('\n')) == std::string::npos) {
            pollfd tPoll{m_iHandle, POLLIN, 0};
            if (tDeadline.hasExpired() || ::poll(&tPoll, 1, Patience) <= 0) return {};
            char sBytes[4096];
            const ssize_t lRead = ::read(m_iHandle, sBytes, sizeof sBytes);
            if (lRead <= 0) return {};
            m_sBuffer.append(sBytes, static_cast<std::size_t>(lRead));
        }
        const std::string s = m_sBuffer.substr(0, iEnd + 1);
        m_sBuffer.erase(0, iEnd + 1);
        return s;
    }

private:
    int m_iHandle;
    std::string m_sBuffer;
};

std::string Closed(const std::string& sBody) {
    unsigned iSum = 0;
    for (std::size_t i = 1; i < sBody.size(); ++i) iSum ^= static_cast<unsigned char>(sBody[i]);
    const std::string sDigits = "0123456789ABCDEF";
    return sBody + '*' + sDigits[iSum >> 4] + sDigits[iSum & 15U] + "\r\n";
}

std::string WithoutEnd(const std::string& s) { return s.size() < 2 ? s : s.substr(0, s.size() - 2); }

}  // namespace

class SimulatorTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void receiverSpeaksWholeLines();
    void gpsSpeaksOnItsOwnPort();
    void channelCommandIsObeyed();
    void intervalCommandIsObeyed();
    void commandWithWrongChecksumIsIgnored();
    void nobodyReadingBlocksNothing();
    void nextListenerHearsFreshWholeLines();
    void linksAreRemovedAtTheEnd_data();
    void linksAreRemovedAtTheEnd();
    void staleLinkIsReplaced();
    void ordinaryFileIsLeftAlone();
    void badOptionsAreRefused_data();
    void badOptionsAreRefused();

private:
    void Start(const QStringList& sMore = {});
    QByteArray Said();

    std::unique_ptr<QTemporaryDir> m_pFolder;
    std::unique_ptr<QProcess> m_pProcess;
    QString m_sReceiver;
    QString m_sGps;
};

void SimulatorTest::init() {
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_pProcess = std::make_unique<QProcess>();
    m_sReceiver = m_pFolder->filePath(QStringLiteral("receiver"));
    m_sGps = m_pFolder->filePath(QStringLiteral("gps"));
}

void SimulatorTest::cleanup() {
    if (m_pProcess->state() != QProcess::NotRunning) {
        m_pProcess->terminate();
        QVERIFY(m_pProcess->waitForFinished(Patience));
    }
}

// Twenty times as fast as life, without damage, unless told otherwise.
void SimulatorTest::Start(const QStringList& sMore) {
    QStringList s{QStringLiteral("--receiver"), m_sReceiver,          QStringLiteral("--gps"),     m_sGps,
                  QStringLiteral("--rate"),     QStringLiteral("20"), QStringLiteral("--damaged"), QStringLiteral("0")};
    m_pProcess->start(QStringLiteral(SIMULATOR_PROGRAM), s + sMore);
    QVERIFY(m_pProcess->waitForStarted(Patience));
    QVERIFY(Said().startsWith("receiver "));
    QVERIFY(Said().startsWith("gps "));
}

// The next line on its standard output.
QByteArray SimulatorTest::Said() {
    const QDeadlineTimer tDeadline(Patience);
    while (!m_pProcess->canReadLine()) {
        if (tDeadline.hasExpired() || m_pProcess->state() == QProcess::NotRunning) return {};
        m_pProcess->waitForReadyRead(100);
    }
    return m_pProcess->readLine().trimmed();
}

void SimulatorTest::receiverSpeaksWholeLines() {
    Start();
    Line tLine(m_sReceiver);
    QVERIFY(tLine.IsOpen());
    int iVdm = 0, iSignal = 0;
    for (int i = 0; i < 400; ++i) {
        const std::string s = tLine.Next();
        QVERIFY(s.size() > 8 && s.substr(s.size() - 2) == "\r\n");
        QVERIFY2(reader::ChecksumRight(WithoutEnd(s)), s.c_str());
        iVdm += reader::IsVdm(s) ? 1 : 0;
        iSignal += s.rfind("$PNMLS,", 0) == 0 ? 1 : 0;
    }
    QCOMPARE(iVdm + iSignal, 400);
    QVERIFY(iVdm >= iSignal && iSignal > 150);
}

void SimulatorTest::gpsSpeaksOnItsOwnPort() {
    Start();
    Line tLine(m_sGps);
    const std::string sFirst = tLine.Next();
    const bool bGllFirst = sFirst.rfind("$GPGLL,", 0) == 0;
    for (int i = 1; i < 20; ++i) {
        const std::string s = tLine.Next();
        const bool bGll = (i % 2 == 0) == bGllFirst;
        QCOMPARE(s.substr(0, 7), std::string(bGll ? "$GPGLL," : "$GPRMC,"));
        QVERIFY(reader::ChecksumRight(WithoutEnd(s)));
    }
}

void SimulatorTest::channelCommandIsObeyed() {
    Start();
    Line tLine(m_sReceiver);
    for (const char* sChannel : {"A", "B"}) {
        tLine.Write(Closed(std::string("$PNMLC,") + sChannel));
        QCOMPARE(Said(), QByteArray("channel ") + sChannel);
        std::vector<std::string> sHeard;
        while (sHeard.size() < 120) {
            const std::string s = tLine.Next();
            QVERIFY(!s.empty());
            if (reader::IsVdm(s)) sHeard.push_back(reader::ReadVdm(WithoutEnd(s)).sChannel);
        }
        // What was on its way before may come first.
        const std::set<std::string> sLater(sHeard.begin() + 40, sHeard.end());
        QCOMPARE(sLater, std::set<std::string>{sChannel});
    }
    tLine.Write(Closed("$PNMLC,S"));
    QCOMPARE(Said(), QByteArray("channel S"));
}

void SimulatorTest::intervalCommandIsObeyed() {
    Start();
    Line tLine(m_sReceiver);
    tLine.Write(Closed("$PNMLT,\x05"));
    QCOMPARE(Said(), QByteArray("interval 5"));
    std::string sLast;
    for (int i = 0; i < 200; ++i) {
        const std::string s = tLine.Next();
        if (s.rfind("$PNMLS,", 0) == 0) sLast = WithoutEnd(s);
    }
    QVERIFY(!sLast.empty());
    QCOMPARE(sLast.substr(sLast.size() - 5, 3), std::string(",5*"));
}

void SimulatorTest::commandWithWrongChecksumIsIgnored() {
    Start();
    Line tLine(m_sReceiver);
    tLine.Write("$PNMLC,A*00\r\n");
    QCOMPARE(Said(), QByteArray("wrong checksum"));
    std::set<std::string> sHeard;
    for (int i = 0; i < 200; ++i) {
        const std::string s = tLine.Next();
        if (reader::IsVdm(s)) sHeard.insert(reader::ReadVdm(WithoutEnd(s)).sChannel);
    }
    QCOMPARE(sHeard, (std::set<std::string>{"A", "B"}));
}

// Both ports open and nothing read while megabytes are said: commands are obeyed all the same, and what is read
// afterwards are whole lines.
void SimulatorTest::nobodyReadingBlocksNothing() {
    Start({QStringLiteral("--rate"), QStringLiteral("2000")});
    Line tLine(m_sReceiver);
    Line tGps(m_sGps);
    for (int i = 0; i < 10; ++i) {
        tLine.Write(Closed("$PNMLT,\x04"));
        QCOMPARE(Said(), QByteArray("interval 4"));
        QTest::qWait(30);
    }
    for (int i = 0; i < 2000; ++i) {
        const std::string s = tLine.Next();
        QVERIFY2(s.size() > 2 && reader::ChecksumRight(WithoutEnd(s)), s.c_str());
    }
}

void SimulatorTest::nextListenerHearsFreshWholeLines() {
    Start();
    {
        Line tFirst(m_sGps);
        QVERIFY(!tFirst.Next().empty());
    }
    QTest::qWait(300);  // six seconds of the harbour, in which nobody listens
    Line tSecond(m_sGps);
    for (int i = 0; i < 20; ++i) {
        const std::string s = tSecond.Next();
        QVERIFY2(reader::ChecksumRight(WithoutEnd(s)), s.c_str());
    }
}

void SimulatorTest::linksAreRemovedAtTheEnd_data() {
    QTest::addColumn<int>("iSignal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void SimulatorTest::linksAreRemovedAtTheEnd() {
    QFETCH(int, iSignal);
    Start();
    QVERIFY(QFileInfo(m_sReceiver).isSymLink());
    QVERIFY(QFileInfo(m_sGps).isSymLink());
    ::kill(static_cast<pid_t>(m_pProcess->processId()), iSignal);
    QVERIFY(m_pProcess->waitForFinished(Patience));
    QCOMPARE(m_pProcess->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_pProcess->exitCode(), 0);
    QVERIFY(!QFileInfo(m_sReceiver).isSymLink());
    QVERIFY(!QFileInfo(m_sGps).isSymLink());
}

void SimulatorTest::staleLinkIsReplaced() {
    QVERIFY(QFile::link(QStringLiteral("/dev/pts/no-such-terminal"), m_sReceiver));
    Start();
    Line tLine(m_sReceiver);
    QVERIFY(!tLine.Next().empty());
}

void SimulatorTest::ordinaryFileIsLeftAlone() {
    QFile tFile(m_sReceiver);
    QVERIFY(tFile.open(QIODevice::WriteOnly) && tFile.write("mine") == 4);
    tFile.close();
    m_pProcess->start(QStringLiteral(SIMULATOR_PROGRAM), {QStringLiteral("--receiver"), m_sReceiver});
    QVERIFY(m_pProcess->waitForFinished(Patience));
    QCOMPARE(m_pProcess->exitCode(), 1);
    QVERIFY(tFile.open(QIODevice::ReadOnly));
    QCOMPARE(tFile.readAll(), QByteArray("mine"));
}

void SimulatorTest::badOptionsAreRefused_data() {
    QTest::addColumn<QStringList>("sOptions");
    QTest::newRow("none") << QStringList{};
    QTest::newRow("unknown") << QStringList{QStringLiteral("--speed"), QStringLiteral("3")};
    QTest::newRow("no value") << QStringList{QStringLiteral("--gps"), m_sGps, QStringLiteral("--seed")};
    QTest::newRow("no number") << QStringList{QStringLiteral("--gps"), QStringLiteral("x"), QStringLiteral("--rate"),
                                              QStringLiteral("fast")};
    QTest::newRow("out of range") << QStringList{QStringLiteral("--gps"), QStringLiteral("x"),
                                                 QStringLiteral("--missing"), QStringLiteral("101")};
}

void SimulatorTest::badOptionsAreRefused() {
    QFETCH(QStringList, sOptions);
    m_pProcess->start(QStringLiteral(SIMULATOR_PROGRAM), sOptions);
    QVERIFY(m_pProcess->waitForFinished(Patience));
    QCOMPARE(m_pProcess->exitCode(), 2);
    QVERIFY(m_pProcess->readAllStandardError().contains("Usage"));
}

QTEST_GUILESS_MAIN(SimulatorTest)
#include "SimulatorTest.moc"
