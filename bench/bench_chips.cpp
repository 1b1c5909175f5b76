// A whole AVR and a whole I2C EEPROM through the simulated programmer: the frames of each kind against the
// fewest that MAX_DATA and the page size allow, and the speed against a bare loop that sends the very same
// frames.

#include "bare_line.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>

namespace {

/// MAX_DATA of the simulator's shipped description.
constexpr int maxData = 256;

struct Wanted
{
    const char* text;
    quint8 opcode;
    int frames;
};

struct Chip
{
    const char* name;
    const char* file;
    const char* address; ///< more parameters of set_device
    const char* commands;
    QList<Wanted> wanted;
};

struct Exchange
{
    QByteArray request;
    QByteArray reply;
};

struct Trace
{
    QList<Exchange> exchanges;
    double seconds = 0;
};

/// The simulator on a link of its own, with its frames written down.
class Simulator
{
public:
    explicit Simulator(const QString& chip)
    {
        m_process.start(QCoreApplication::applicationDirPath() + "/velmarkion-sim",
                        {"--chip", chip, "--port", port(), "--trace", m_dir.filePath("trace")});
        while (m_process.waitForReadyRead(5000) && !m_process.readAll().contains("ready"))
            continue;
    }
    ~Simulator() { end(); }
    void end()
    {
        m_process.terminate();
        m_process.waitForFinished(5000);
    }
    QString port() const { return m_dir.filePath("line"); }
    QString project() const { return m_dir.filePath("chip.prj"); }
    QString traceFile() const { return m_dir.filePath("trace"); }

private:
    QTemporaryDir m_dir;
    QProcess m_process;
};

Trace readTrace(const QString& fileName)
{
    Trace trace;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return trace;
    double first = -1;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const int mark = line.indexOf(line.contains('>') ? '>' : '<');
        if (mark < 0)
            continue;
        const QByteArray time = line.left(mark).trimmed();
        const double now =
            QTime::fromString(QString::fromLatin1(time.left(8)), "hh:mm:ss").msecsSinceStartOfDay() / 1e3 +
            ("0" + time.mid(8)).toDouble();
        first = first < 0 ? now : first;
        trace.seconds = now - first;
        const QByteArray bytes = QByteArray::fromHex(line.mid(mark + 1));
        if (line.at(mark) == '>')
            trace.exchanges.append({bytes, {}});
        else if (!trace.exchanges.isEmpty())
            trace.exchanges.last().reply = bytes;
    }
    return trace;
}

Trace runProgram(const Chip& chip)
{
    Simulator simulator(chip.name);
    QFile project(simulator.project());
    if (project.open(QIODevice::WriteOnly)) {
        project.write(QByteArray("{\"configurations\":[{\"name\":\"A\",\"description\":\"\",\"commands\":["
                                 "{\"status\":\"1\",\"cmd\":\"set_prog\",\"prog\":\"Simulator\",\"alt_"
                                 "enabled\":\"false\",\"alt_port\":\"\"},"
                                 "{\"status\":\"1\",\"cmd\":\"set_device\",\"device\":\"") +
                      chip.name + "\",\"file\":\"" + chip.file + "\"" + chip.address + "}," + chip.commands +
                      "]}]}");
        project.close();
    }
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + "/velmarkion",
                  {"run", "--port", "Simulator=" + simulator.port(), simulator.project()});
    program.waitForFinished(120000);
    if (program.exitCode() != 0)
        std::fputs(program.readAll().constData(), stderr);
    simulator.end();
    return readTrace(simulator.traceFile());
}

/// The same requests again, with nothing around them.
double bareSeconds(const Chip& chip, const Trace& trace)
{
    const Simulator simulator(chip.name);
    const int line = open(QFile::encodeName(simulator.port()).constData(), O_RDWR | O_NOCTTY);
    if (line < 0 || !makeRaw(line))
        return 0;
    QByteArray reply(1 << 17, '\0');
    QElapsedTimer timer;
    timer.start();
    for (const Exchange& exchange : trace.exchanges) {
        if (!putAll(line, exchange.request.constData(), exchange.request.size()) ||
            !getAll(line, reply.data(), exchange.reply.size()))
            return 0;
    }
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    close(line);
    return seconds;
}

bool measureChip(const Chip& chip)
{
    const Trace trace = runProgram(chip);
    bool good = true;
    for (const Wanted& wanted : chip.wanted) {
        int frames = 0;
        for (const Exchange& exchange : trace.exchanges)
            frames += quint8(exchange.request.at(1)) == wanted.opcode ? 1 : 0;
        std::printf("%-12s %-18s %6d frames, fewest %6d\n", chip.name, wanted.text, frames, wanted.frames);
        good = good && frames == wanted.frames;
    }
    const double bare = bareSeconds(chip, trace);
    const int count = trace.exchanges.size();
    std::printf("%-12s all                %6d frames, %6.0f exchanges/s, bare loop %6.0f, ratio %.2f\n",
                chip.name, count, count / trace.seconds, count / bare, bare / trace.seconds);
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    constexpr int flash = 0x40000;
    constexpr int eeprom = 0x10000;
    const Chip avr{
        "ATmega2560",
        "avr/ATmega2560.dev",
        ",\"clk\":\"125000\"",
        "{\"status\":\"1\",\"cmd\":\"flash_char_write\",\"addr_device\":\"0\",\"count\":\"262144\",\"fill_"
        "char\":\"90\"},"
        "{\"status\":\"1\",\"cmd\":\"flash_char_verify\",\"addr_device\":\"0\",\"count\":\"262144\",\"fill_"
        "char\":\"90\"}",
        // A commit for each page, and the extended address at each of four 64 KiB lines, for both commands.
        {{"flash write", 4, flash / 256},
         {"flash read", 3, flash / maxData},
         {"commit, extended", 7, flash / 256 + 2 * 4}}};
    const Chip i2c{"24C512",
                   "i2c-eeprom/24C512.dev",
                   ",\"clk\":\"100000\",\"addr\":\"0\"",
                   "{\"status\":\"1\",\"cmd\":\"char_write\",\"addr_device\":\"0\",\"count\":\"65536\","
                   "\"fill_char\":\"90\"},"
                   "{\"status\":\"1\",\"cmd\":\"char_verify\",\"addr_device\":\"0\",\"count\":\"65536\","
                   "\"fill_char\":\"90\"}",
                   {{"write", 4, eeprom / 128}, {"read", 5, eeprom / maxData}}};
    const bool avrGood = measureChip(avr);
    return measureChip(i2c) && avrGood ? 0 : 1;
}
