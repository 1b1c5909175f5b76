#include "core/TDataPrj.h"
#include "core/globals.h"
#include "exec/RunBench.h"
#include "exec/TProgTask.h"
#include "support/ScriptedPeer.h"

#include <QtTest>

namespace {

QByteArray answerTo(const QByteArray& request)
{
    const quint8 opcode = static_cast<quint8>(request.at(1));
    return opcode == 0x80 ? peerFrame(opcode, QByteArray("\xD2\x04", 2)) : peerFrame(opcode);
}

} // namespace

/// ID Prog and Reset against a scripted programmer: the frames in their order, and the last line.
class TestProgTask : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
};

void TestProgTask::frames_data()
{
    QTest::addColumn<bool>("resets");
    QTest::addColumn<bool>("hasProg");
    QTest::addColumn<QByteArray>("odd"); // opcode and first payload byte that is answered differently
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("frames");
    QTest::addColumn<QString>("last");
    const QByteArray none;
    const QByteArray refusal = peerFrame(0xFF, QByteArray("\x03\x00", 2));
    const QString wrong = QStringLiteral("6 Programmer: wrong parameter");
    const QString silent = QStringLiteral("6 No answer from the programmer");
    QTest::newRow("id") << false << true << none << none << "80 81 83:03"
                        << "5 Done";
    QTest::newRow("id without set_prog") << false << false << none << none << ""
                                         << "6 ";
    QTest::newRow("id refused") << false << true << QByteArray("\x83\x03") << refusal << "80 81 83:03"
                                << wrong;
    QTest::newRow("id unanswered") << false << true << QByteArray("\x80") << none << "80" << silent;
    // -400 ms of the description; the chip's reset line is low.
    QTest::newRow("reset") << true << true << none << none << "80 81 83:01 86:70fe 83:00"
                           << "5 Done";
    QTest::newRow("pulse refused") << true << true << QByteArray("\x86") << refusal
                                   << "80 81 83:01 86:70fe 83:02" << wrong;
    QTest::newRow("pulse unanswered: nothing more is sent")
        << true << true << QByteArray("\x86") << none << "80 81 83:01 86:70fe" << silent;
    QTest::newRow("reset without programmer") << true << false << none << none << ""
                                              << "6 ";
}

void TestProgTask::frames()
{
    QFETCH(bool, resets);
    QFETCH(bool, hasProg);
    QFETCH(QByteArray, odd);
    QFETCH(QByteArray, reply);
    QFETCH(QString, frames);
    QFETCH(QString, last);
    ScriptedPeer peer;
    peer.otherwise([=](const QByteArray& request) {
        const bool hit =
            !odd.isEmpty() && request.at(1) == odd.at(0) && (odd.size() < 2 || request.at(4) == odd.at(1));
        return hit ? reply : answerTo(request);
    });
    peer.start();
    RunBench bench;
    bench.addProgrammer(QStringLiteral("bench"), peer.path());
    const int cfg = bench.addCfg(QStringLiteral("A"));
    if (hasProg)
        bench.addLink(cfg, QStringLiteral("bench"), QStringLiteral("ATmega328P"));
    const int id = bench.addCmd(cfg, QStringLiteral("ident"));
    bench.bind();

    TProgTask task(id);
    QString told;
    connect(&task, &TProgTask::signalEventText, this, [&](TCodeExec code, const QString& text) {
        told = QStringLiteral("%1 %2").arg(QString::number(code), text);
    });
    QCOMPARE(resets ? task.reset() : task.identify(), last.startsWith(QLatin1Char('5')));
    QCOMPARE(told, last);
    QStringList sent;
    peer.finish();
    for (const QByteArray& request : peer.requests()) {
        const QByteArray payload = request.mid(4, request.size() - 5).toHex();
        sent.append(request.mid(1, 1).toHex() + (payload.isEmpty() ? "" : ":" + payload));
    }
    QCOMPARE(sent.join(QLatin1Char(' ')), frames);
}

QTEST_GUILESS_MAIN(TestProgTask)
#include "test_prog_task.moc"
