#include "core/TAppData.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "forms/TFormDevCfg.h"
#include "forms/TFormFactory.h"
#include "support/BenchProject.h"

#include <QComboBox>
#include <QtTest>

#include <memory>

/// Every form of every chip that is shipped: built without a line in the log, and fit for the defaults.
class TestChipForms : public QObject
{
    Q_OBJECT

private slots:
    void builds();
};

void TestChipForms::builds()
{
    BenchProject bench;
    bench.addProg();
    const int id = bench.addChip(); // stands for all: a form asks it for its programmer
    TFormFactory factory;
    setFormFactory(&factory);
    appData().PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    QFile::remove(fileInAppDir("log"));
    const QStringList formless{
        "separator", cmd::ident, cmd::erase, cmd::test_empty, cmd::test_empty_flash, cmd::test_empty_eeprom};
    const QHash<QString, QString> files = TDeviceList::deviceFiles();
    int built = 0;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const std::unique_ptr<IDevice> chip(deviceList().create(file.key(), file.value()));
        QVERIFY2(chip, qPrintable(file.key()));
        const bool hasStatus = chip->deviceData().contains(key::status_reg_cfg);
        for (const QString& word : chip->commandKeys()) {
            const std::string what = qPrintable(file.key() + ": " + word);
            TData data{{key::id_cmd, id}, {key::cmd, word}};
            chip->setDefaultParams(data);
            const std::unique_ptr<QWidget> form(chip->createForm(data));
            const bool isFormless = formless.contains(word) || (!hasStatus && word.startsWith("status_reg"));
            QVERIFY2(bool(form) != isFormless, what.c_str());
            const auto* drawn = qobject_cast<TFormDevCfg*>(form.get());
            if (!drawn)
                continue;
            ++built;
            const QVariant value = data.value(key::data); // a number where it selects registers
            QVERIFY2(value.type() != QVariant::String || drawn->text() == value, what.c_str());
            for (const QComboBox* box : drawn->findChildren<QComboBox*>())
                QVERIFY2(box->currentIndex() >= 0, what.c_str());
        }
    }
    QVERIFY(built > 2 * files.size());
    QVERIFY(!QFile::exists(fileInAppDir("log")));
    setFormFactory(nullptr);
}

QTEST_MAIN(TestChipForms)
#include "test_chip_forms.moc"
