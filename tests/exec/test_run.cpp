#include "core/TAppData.h"
#include "core/TDataCfg.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "core/keys.h"
#include "exec/RunBench.h"
#include "support/ScriptedPeer.h"
#include "support/tables.h"

#include <QtTest>

namespace {

const QByteArray interfaceId("\xD2\x04", 2);

/// Answers every request as a programmer that agrees with everything.
QByteArray agree(const QByteArray& request)
{
    const quint8 opcode = static_cast<quint8>(request.at(1));
    if (opcode == 0x80)
        return peerFrame(opcode, interfaceId);
    if (opcode == 0x81)
        return peerFrame(opcode, "Bench");
    return peerFrame(opcode);
}

/// As above, but the request with this opcode and first payload byte (or any, -1) gets another answer.
ScriptedPeer::Answer agreeBut(quint8 opcode, int first, const QByteArray& reply)
{
    return [=](const QByteArray& request) {
        const bool hit = static_cast<quint8>(request.at(1)) == opcode &&
                         (first < 0 || (request.size() > 5 && request.at(4) == static_cast<char>(first)));
        return hit ? reply : agree(request);
    };
}

struct AgreeingPeer : ScriptedPeer
{
    AgreeingPeer()
    {
        otherwise(agree);
        start();
    }
};

/// Opcode, and for short payloads the payload, of all requests: "80 81 83:01 85 83:00".
QString framesOf(const ScriptedPeer& peer)
{
    QStringList list;
    for (const QByteArray& request : peer.requests()) {
        const QByteArray payload = request.mid(4, request.size() - 5);
        QString text = QString::fromLatin1(request.mid(1, 1).toHex());
        if (!payload.isEmpty())
            text += QLatin1Char(':') + QString::fromLatin1(payload.toHex());
        list.append(text);
    }
    return list.join(QLatin1Char(' '));
}

const QByteArray refusal = peerFrame(0xFF, QByteArray("\x03\x00", 2));

} // namespace

class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { lang().load(QStringLiteral(VM_DATA_DIR "/language/eng.lng")); }
    void frames_data();
    void frames();
    void emptyConfigurationOpensNoPort();
    void twoProgrammersInOneRun();
    void eventsOfAGoodRun();
    void pauseResume();
    void stopInPauseAndDelay_data();
    void stopInPauseAndDelay();
    void loopOfCounterAndJamp();
    void jampKeepsTheStartedConfiguration();
    void pauseBehindAJampResumesByTheStartedConfiguration();
    void executeStartsAnotherRun();
    void deletedRunningCommandEndsTheRun();
    void sameConfigurationAgainRightBehindItsResult();
};

void TestRun::frames_data()
{
    tableColumns<QString, QVariantList, int, int, QByteArray, QString, int, int, QString>(
        "word", "params", "badOpcode", "badFirst", "badReply", "frames", "status", "lastCode", "lastText");

    const QVariantList vcc{key::vcc, 3.3};
    const QByteArray none;
    const QString done = QStringLiteral("Done");
    const QString noAnswer = QStringLiteral("No answer from the programmer");
    const QString refused = QStringLiteral("Programmer: wrong parameter");
    tableRow("good", "set_vcc", vcc, -1, -1, none, "80 81 83:01 89:21 85 83:00", int(csDone), int(ceSuccess),
             done);
    tableRow("refused", "set_vcc", vcc, 0x89, -1, refusal, "80 81 83:01 89:21 85 83:02", int(csFailed),
             int(ceFailed), refused);
    tableRow("no answer: nothing more is sent", "set_vcc", vcc, 0x89, -1, none, "80 81 83:01 89:21",
             int(csFailed), int(ceFailed), noAnswer);
    tableRow("another programmer", "set_vcc", vcc, 0x80, -1, peerFrame(0x80, "\x01\x02"), "80 81 85 83:02",
             int(csFailed), int(ceFailed), "The programmer does not fit its description");
    // No executor was left that had something to close; the indicator still tells the failure.
    tableRow("no chip", "erase", QVariantList(), -1, -1, none, "80 81 83:01 83:02", int(csFailed),
             int(ceFailed), langText(387).arg("Erase"));
    tableRow("wrong parameter", "set_vcc", QVariantList{key::vcc, 99.0}, -1, -1, none, "80 81 83:01 85 83:02",
             int(csFailed), int(ceFailed), langText(388).arg("Set Vcc"));
    tableRow("state 1 refused", "set_vcc", vcc, 0x83, 1, refusal, "80 81 83:01 85 83:02", int(csFailed),
             int(ceFailed), refused);
    tableRow("closing refused after a good run: red line, green status", "set_vcc", vcc, 0x85, -1, refusal,
             "80 81 83:01 89:21 85 83:02", int(csDone), int(ceFailed), "");
    tableRow("closing unanswered", "set_vcc", vcc, 0x85, -1, none, "80 81 83:01 89:21 85", int(csDone),
             int(ceFailed), "");
}

void TestRun::frames()
{
    QFETCH(QString, word);
    QFETCH(QVariantList, params);
    QFETCH(int, badOpcode);
    QFETCH(int, badFirst);
    QFETCH(QByteArray, badReply);
    QFETCH(QString, frames);
    QFETCH(int, status);
    QFETCH(int, lastCode);
    QFETCH(QString, lastText);

    ScriptedPeer peer;
    peer.otherwise(agreeBut(static_cast<quint8>(badOpcode), badFirst, badReply));
    peer.start();
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P");
    bench.addCmd(cfg, word, params);
    bench.bind();
    QVERIFY(bench.run({cfg}));

    QCOMPARE(peer.finish(), QString());
    QCOMPARE(framesOf(peer), frames);
    QCOMPARE(project().cfgStatus(cfg), status);
    QCOMPARE(int(bench.last().code), lastCode);
    QCOMPARE(bench.last().text1, lastText);
    QCOMPARE(bench.view(cfg).ended, 1);
}

void TestRun::emptyConfigurationOpensNoPort()
{
    RunBench bench;
    const int cfg = bench.addCfg("A");
    QVERIFY(bench.run({cfg}));
    QCOMPARE(bench.log().size(), 1);
    QCOMPARE(bench.last().text1, langText(391));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::twoProgrammersInOneRun()
{
    AgreeingPeer first;
    AgreeingPeer second;
    RunBench bench;
    bench.addProgrammer("P", first.path());
    bench.addProgrammer("Q", second.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P");
    bench.addLink(cfg, "Q");
    bench.bind();
    QVERIFY(bench.run({cfg}));
    QCOMPARE(first.finish(), QString());
    QCOMPARE(second.finish(), QString());
    QCOMPARE(framesOf(first), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(framesOf(second), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::eventsOfAGoodRun()
{
    AgreeingPeer peer;
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P");
    bench.addCmd(cfg, cmd::set_vcc, {key::vcc, 3.3});
    bench.bind();
    QList<int> statuses;
    QObject::connect(&bench.control(), &TRunControl::signalStatusChanged,
                     [&](int, int status) { statuses.append(status); });
    QVERIFY(bench.run({cfg}));
    QStringList lines;
    for (const LogEvent& event : bench.log())
        lines.append(QStringLiteral("%1|%2|%3").arg(QString::number(event.code), event.text1, event.text2));
    const QStringList expected{
        QStringLiteral("0|Set Prog|P: %1, Simulator").arg(peer.path()),
        QStringLiteral("4|Bench|"),
        QStringLiteral("0|Set Vcc|3.3 V"),
        QStringLiteral("5|Done|"),
    };
    QCOMPARE(lines, expected);
    QCOMPARE(statuses, (QList<int>{csRun, csDone}));
    QCOMPARE(bench.view(cfg).percents, (QList<int>{0, 0}));
}

void TestRun::pauseResume()
{
    RunBench bench;
    const int cfg = bench.addCfg("A");
    bench.addCmd(cfg, cmd::pause);
    bench.addCmd(cfg, cmd::delay, {key::value, 1});
    bench.bind();
    bench.control().start(cfg);
    QTRY_COMPARE(project().cfgStatus(cfg), int(csPause));
    bench.control().start(cfg); // one run at most
    bench.control().resume(cfg);
    QCOMPARE(project().cfgStatus(cfg), int(csRun));
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.texts(ceWork), QStringList{langText(396)});
    QCOMPARE(bench.texts(ceCmdBegin), (QStringList{"Pause", "Delay"}));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
    QCOMPARE(bench.view(cfg).begun, 1);
}

void TestRun::stopInPauseAndDelay_data()
{
    tableColumns<QString, QVariantList, bool>("word", "params", "atItsLine");
    tableRow("pause", "pause", QVariantList(), false);
    tableRow("delay", "delay", QVariantList{key::value, 60000}, false);
    tableRow("pause, while its line is shown", "pause", QVariantList(), true);
}

void TestRun::stopInPauseAndDelay()
{
    QFETCH(QString, word);
    QFETCH(QVariantList, params);
    QFETCH(bool, atItsLine);
    AgreeingPeer peer;
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P");
    bench.addCmd(cfg, word, params);
    bench.addCmd(cfg, cmd::set_vcc, {key::vcc, 3.3});
    bench.bind();
    bench.onEvent([&](const LogEvent& event) {
        if (event.code != ceCmdBegin || event.text1 == QLatin1String("Set Prog"))
            return;
        if (atItsLine)
            bench.control().stopAll();
        else
            QTimer::singleShot(50, &bench.control(), &TRunControl::stopAll);
    });
    QVERIFY(bench.run({cfg}, 5000));
    QCOMPARE(peer.finish(), QString());
    QCOMPARE(framesOf(peer), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(bench.last().text1, langText(390));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::loopOfCounterAndJamp()
{
    RunBench bench;
    const int cfg = bench.addCfg("A");
    const int counter = bench.addCmd(cfg, cmd::counter, {key::value, 0, key::limit, 3, key::delta, 1});
    bench.addCmd(cfg, cmd::delay, {key::value, 0});
    bench.addCmd(cfg, cmd::jamp, {key::to_cmd, counter});
    bench.bind();
    project().clearChanged();
    QVERIFY(bench.run({cfg}));
    QCOMPARE(bench.texts(ceCmdBegin).count(QStringLiteral("Counter")), 3);
    QCOMPARE(bench.texts(ceCmdBegin).count(QStringLiteral("Delay")), 2);
    QCOMPARE(project().cmdById(counter)->param(key::value).toInt(), 3);
    QVERIFY(project().isChanged());
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::jampKeepsTheStartedConfiguration()
{
    RunBench bench;
    const int a = bench.addCfg("A");
    const int b = bench.addCfg("B");
    const int jump = bench.addCmd(a, cmd::jamp);
    bench.addCmd(a, cmd::delay, {key::value, 1});
    const int unchecked = bench.addCmd(b, cmd::delay, {key::value, 2});
    bench.addCmd(b, cmd::delay, {key::value, 3});
    project().setCmdParam(jump, {{key::id_cmd, jump}, {key::to_cmd, unchecked}});
    project().setCmdStatus(unchecked, false);
    bench.bind();
    QVERIFY(bench.run({a}));
    // The target is unchecked, so the next one behind it runs; all lines go to the started one's log.
    QCOMPARE(bench.texts(ceCmdBegin), (QStringList{"Jamp", "Delay"}));
    QCOMPARE(bench.log().at(2).text2, QStringLiteral("3 ms"));
    QCOMPARE(bench.texts(ceWork), QStringList{QStringLiteral("\n--> %1 \"B\"").arg(langText(394))});
    QCOMPARE(project().cfgStatus(a), int(csDone));
    QCOMPARE(project().cfgStatus(b), int(csIdle));
    for (const LogEvent& event : bench.log())
        QCOMPARE(event.idCfg, a);
}

void TestRun::pauseBehindAJampResumesByTheStartedConfiguration()
{
    RunBench bench;
    const int a = bench.addCfg("A");
    const int b = bench.addCfg("B");
    const int jump = bench.addCmd(a, cmd::jamp);
    const int pause = bench.addCmd(b, cmd::pause);
    project().setCmdParam(jump, {{key::id_cmd, jump}, {key::to_cmd, pause}});
    bench.bind();
    bench.control().start(a);
    QTRY_COMPARE(project().cfgStatus(a), int(csPause));
    QCOMPARE(project().cfgStatus(b), int(csIdle));
    bench.control().resume(a);
    QVERIFY(bench.waitIdle(5000));
    QCOMPARE(project().cfgStatus(a), int(csDone));
}

void TestRun::executeStartsAnotherRun()
{
    RunBench bench;
    const int a = bench.addCfg("A");
    const int b = bench.addCfg("B");
    bench.addCmd(a, cmd::execute, {key::cfg, a}); // itself: nothing
    bench.addCmd(a, cmd::execute, {key::cfg, b});
    bench.addCmd(a, cmd::delay, {key::value, 1});
    bench.addCmd(b, cmd::delay, {key::value, 2});
    bench.bind();
    QVERIFY(bench.run({a}));
    QCOMPARE(project().cfgStatus(a), int(csDone));
    QCOMPARE(project().cfgStatus(b), int(csDone));
    QCOMPARE(bench.view(a).begun, 1);
    QCOMPARE(bench.view(b).begun, 1);
}

void TestRun::deletedRunningCommandEndsTheRun()
{
    RunBench bench;
    const int cfg = bench.addCfg("A");
    bench.addCmd(cfg, cmd::delay, {key::value, 1});
    const int second = bench.addCmd(cfg, cmd::delay, {key::value, 2});
    bench.addCmd(cfg, cmd::delay, {key::value, 3});
    bench.bind();
    bench.onEvent([&](const LogEvent& event) {
        if (event.text2 == QLatin1String("2 ms")) {
            project().removeCmd(second);
            project().bindAll();
        }
    });
    QVERIFY(bench.run({cfg}, 5000));
    // It must not begin again at the first command.
    QCOMPARE(bench.texts(ceCmdBegin).size(), 2);
}

void TestRun::sameConfigurationAgainRightBehindItsResult()
{
    RunBench bench;
    const int cfg = bench.addCfg("A");
    bench.addCmd(cfg, cmd::delay, {key::value, 1});
    bench.bind();
    int again = 3;
    QObject::connect(
        &bench.control(), &TRunControl::signalStatusChanged, &bench.control(),
        [&](int id, int status) {
            if (status == csDone && again-- > 0)
                bench.control().start(id);
        },
        Qt::QueuedConnection);
    QVERIFY(bench.run({cfg}));
    QTRY_COMPARE(bench.texts(ceSuccess).size(), 4);
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.view(cfg).begun, 4);
    QVERIFY(!bench.control().isRunning(cfg));
}

QTEST_GUILESS_MAIN(TestRun)
#include "test_run.moc"
