#include "link/TProg.h"
#include "support/SimProcess.h"
#include "support/TestDir.h"

#include <QFile>
#include <QSerialPort>
#include <QtTest>

namespace {

QStringList linesOf(const QString& document)
{
    QFile file(QStringLiteral(VM_SOURCE_DIR "/docs/") + document);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

// The bytes of the lines that begin with mark, in their order.
QList<QByteArray> framesOf(const QStringList& lines, const QString& mark)
{
    QList<QByteArray> frames;
    for (const QString& line : lines) {
        if (line.startsWith(mark))
            frames.append(QByteArray::fromHex(line.mid(mark.size()).toLatin1()));
    }
    return frames;
}

} // namespace

class TestDocuments : public QObject
{
    Q_OBJECT

private slots:
    void sessionIsWhatTheSimulatorDoes();
    void programmerExampleReadsAsTold();
};

void TestDocuments::sessionIsWhatTheSimulatorDoes()
{
    const QStringList lines = linesOf(QStringLiteral("protocol.md"));
    const QList<QByteArray> requests = framesOf(lines, QStringLiteral("    > "));
    const QList<QByteArray> replies = framesOf(lines, QStringLiteral("    < "));
    QVERIFY(requests.size() > 10);
    QCOMPARE(replies.size(), requests.size());
    SimProcess sim({QStringLiteral("--chip"), QStringLiteral("W25Q64JV")});
    QVERIFY2(sim.isReady(), sim.output().constData());
    QSerialPort port(sim.path());
    QVERIFY(port.open(QIODevice::ReadWrite));
    for (int i = 0; i < requests.size(); ++i) {
        port.write(requests.at(i));
        QByteArray reply;
        while (reply.size() < replies.at(i).size() && port.waitForReadyRead(5000))
            reply += port.readAll();
        QCOMPARE(reply.toHex(' ').toUpper(), replies.at(i).toHex(' ').toUpper());
    }
    port.close();
    QVERIFY(sim.stop());
}

void TestDocuments::programmerExampleReadsAsTold()
{
    QByteArray text;
    for (const QString& line : linesOf(QStringLiteral("programmer-files.md"))) {
        if (text.isEmpty() ? line.startsWith(QLatin1String("    ; Flashling"))
                           : line.isEmpty() || line.startsWith(QLatin1String("    ")))
            text += line.trimmed().toUtf8() + '\n';
        else if (!text.isEmpty())
            break;
    }
    const TestDir dir(TestDir::Empty);
    const TProg prog(dir.write(QStringLiteral("example.cfg"), text));
    const QString section = QStringLiteral("SPI_FLASH");
    QCOMPARE(prog.interfaceId(), 4712);
    QCOMPARE(prog.pinLetters(), QStringLiteral("-ILH"));
    QCOMPARE(prog.pinList(section, true), (QStringList{"CS# - A", "SCK - B", "SI, IO0 - C", "SO, IO1 - D"}));
    QCOMPARE(prog.clockCode(section, prog.clockDefault(section)), 1);
    QVERIFY(prog.supportsCommand(QStringLiteral("set_io")) &&
            !prog.supportsCommand(QStringLiteral("set_vcc")));
}

QTEST_GUILESS_MAIN(TestDocuments)
#include "test_documents.moc"
