#include "base/keys.h"
#include "core/model/shared_settings.h"
#include "devices/TDeviceList.h"
#include "devices/shared/description.h"
#include "exec/RunBench.h"
#include "link/lists/line_rules.h"
#include "support/SimProcess.h"

#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int sideBySide = 4;
constexpr int timeoutMs = 600000; ///< for the chips that run side by side

/// A number from the environment, so that a longer run needs no other program: VM_CHIP_SEED chooses other
/// chips, VM_CHIP_SAMPLE=10 takes one of each ten to the last, VM_CHIP_SAMPLE=1 all. That is minutes for a
/// family, so QTEST_FUNCTION_TIMEOUT has to allow them.
int fromEnvironment(const char* name, int otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

struct Chip
{
    QString name;
    TData data;
};

/// How many writes fill it: what takes the time. Some chips take a byte at a time.
qint64 writesOf(const Chip& chip)
{
    const auto writes = [&chip](const QLatin1String& size, const QLatin1String& page) {
        return chip.data.value(size).toLongLong() / std::max(1LL, chip.data.value(page).toLongLong());
    };
    return writes(key::size, key::page_size) + writes(key::flash_size, key::flash_page_size);
}

/// The chips of a class, by name.
QList<Chip> chipsOf(const QString& guiType)
{
    QMap<QString, Chip> chips;
    const QHash<QString, QString> files = TDeviceList::deviceFiles();
    for (auto it = files.begin(); it != files.end(); ++it) {
        const TData data = readDescription(deviceFolderFile(devicesFolder(), it.value()));
        if (data.value(key::gui_type) == guiType)
            chips[it.key()] = {it.key(), data};
    }
    return chips.values();
}

/// One of each group of so many neighbours, from any group on. What exceeds so many writes in all is left
/// out, and a chip that would take more than a quarter of them.
QList<Chip> sampled(const QList<Chip>& chips, int every, qint64 writes, std::mt19937& random)
{
    QList<Chip> sample;
    const int start = int(random() % uint(chips.size()));
    qint64 left = writes;
    for (int i = 0; i < chips.size(); i += every) {
        const int place = start + i + int(random() % uint(std::min(every, int(chips.size()) - i)));
        const Chip& chip = chips[place % chips.size()];
        if (writesOf(chip) > std::min(left, writes / 4))
            continue;
        left -= writesOf(chip);
        sample.append(chip);
    }
    return sample;
}

QByteArray contents(qint64 size, std::mt19937& random)
{
    QByteArray bytes(int(size), '\0');
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random()); });
    return bytes;
}

} // namespace

/// Chips of the catalogue in the simulated programmer, which models them from the same files: identified,
/// and a sample of them programmed and verified from the first byte to the last.
class TestChipSample : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { appData().PathDevices = VM_DATA_DIR "/devices"; }

    void identifies()
    {
        std::mt19937 random(uint(fromEnvironment("VM_CHIP_SEED", 1)));
        const QList<Chip> chips = chipsOf(dev_class::avr8_spi);
        QVERIFY(chips.size() > 150);
        runAll(chips + sampled(chipsOf(dev_class::dev25), 8, 1LL << 40, random),
               [](RunBench& bench, int cfg, const Chip&) { bench.addCmd(cfg, cmd::ident); });
    }

    void programs_data()
    {
        QTest::addColumn<QString>("guiType");
        for (const QLatin1String& word : {dev_class::dev25, dev_class::avr8_spi, dev_class::dev24})
            QTest::newRow(word.data()) << QString(word);
    }

    void programs()
    {
        QFETCH(QString, guiType);
        constexpr qint64 quickWrites = 300000; // some 20 s
        const qint64 writes = qEnvironmentVariableIsSet("VM_CHIP_SAMPLE") ? 1LL << 40 : quickWrites;
        std::mt19937 random(uint(fromEnvironment("VM_CHIP_SEED", 1)));
        const QList<Chip> all = chipsOf(guiType);
        const QList<Chip> chips = sampled(all, fromEnvironment("VM_CHIP_SAMPLE", 10), writes, random);
        QVERIFY(!chips.isEmpty());
        qInfo("%d of %d chips", int(chips.size()), int(all.size()));
        runAll(chips, [&](RunBench& bench, int cfg, const Chip& chip) {
            bench.addCmd(cfg, cmd::erase);
            for (const QString memory : {"", "flash_", "eeprom_"}) {
                const qint64 size = chip.data.value(memory + key::size).toLongLong();
                if (size == 0)
                    continue;
                const QString file = memory + chip.name;
                bench.dir().write(file, contents(size, random));
                const QString params = " format=BIN addr_file=0 addr_device=0 count=%1 file=" + file;
                for (const QLatin1String& word : {cmd::file_write, cmd::file_verify})
                    bench.addCmd(cfg, memory + word + params.arg(size));
            }
        });
    }

private:
    using Commands = std::function<void(RunBench& bench, int cfg, const Chip& chip)>;

    /// Runs the commands on each chip, some chips side by side.
    static void runAll(const QList<Chip>& chips, const Commands& commands)
    {
        for (int first = 0; first < chips.size(); first += sideBySide) {
            const QList<Chip> batch = chips.mid(first, sideBySide);
            std::vector<std::unique_ptr<SimProcess>> sims;
            RunBench bench;
            QList<int> ids;
            for (const Chip& chip : batch) {
                sims.push_back(std::make_unique<SimProcess>(QStringList{"--chip", chip.name}));
                QVERIFY2(sims.back()->isReady(), sims.back()->output().constData());
                bench.addProgrammer(chip.name, sims.back()->path());
                ids.append(bench.addCfg(chip.name));
                bench.addLink(ids.last(), chip.name);
                // A clock that every family has.
                const QString device = "set_device device=%1 file=%2 clk=1000000 addr=0";
                bench.addCmd(ids.last(), device.arg(chip.name, TDeviceList::deviceFiles().value(chip.name)));
                commands(bench, ids.last(), chip);
            }
            bench.bind();
            QVERIFY(bench.run(ids, timeoutMs));
            for (int i = 0; i < batch.size(); ++i)
                QVERIFY2(project().cfgStatus(ids[i]) == csDone,
                         qPrintable(batch[i].name + bench.texts(ceFailed).join('\n')));
        }
    }
};

QTEST_GUILESS_MAIN(TestChipSample)
#include "test_chip_sample.moc"
