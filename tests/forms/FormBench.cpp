#include "forms/FormBench.h"

#include "base/keys.h"
#include "core/files/TCtrlProject.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "settings/TAppData.h"

#include <QCheckBox>
#include <QPushButton>

FormBench::FormBench()
{
    setFormFactory(&m_factory);
}

FormBench::~FormBench()
{
    m_form.reset();
    setFormFactory(nullptr);
}

void FormBench::addShippedChip(const QString& chip)
{
    setProg("[SPI_FLASH]\nCLK_LIST=true\nCLK_MIN=1000\nCLK_MAX=9000000\nCLKLV_1000000=1\nCLKLV_8000000=2\n"
            "[AVR_SPI]\nCLK_MIN=1000\nCLK_MAX=9000000\nCLK_DEF=5000\n"
            "[I2C_EEPROM]\nCLK_MIN=1000\nCLK_MAX=400000\n");
    project().setCatalogue(&deviceList());
    appData().PathDevices = VM_DATA_DIR "/devices";
    addProg();
    add(cmd::set_device, {{key::device, chip}, {key::file, TDeviceList::deviceFiles().value(chip)}});
}

void FormBench::open(const QString& command)
{
    idCmd = add(command);
    project().clearChanged();
    m_form.reset(project().cmdById(idCmd)->device()->createForm(data(idCmd)));
    QVERIFY(m_form);
    connect(m_form.get(), SIGNAL(signalChangedCmdParam(TData)), this, SLOT(store(TData)));
    showActive(*m_form);
    QVERIFY(!project().isChanged());
}

void FormBench::act(const QString& step)
{
    const QString kind = step.section(' ', 0, 0);
    const int i = step.section(' ', 1, 1).toInt();
    const QString text = step.section(' ', 2);
    if (kind == "type") {
        enter(line(i), text);
    } else if (kind == "choose") {
        choose(part<QComboBox>(i), text);
    } else if (kind == "check") {
        click(part<QCheckBox>(i));
    } else {
        QPushButton* button = part<QPushButton>(i);
        button->setText('&' + button->text());
        click(button);
    }
}

void FormBench::store(TData params)
{
    QCOMPARE(params.take(key::id_cmd).toInt(), idCmd);
    QStringList keys = params.keys();
    keys.sort();
    for (QString& word : keys)
        word += '=' + params.value(word).toString();
    m_reports << keys.join(' ');
    params[key::id_cmd] = idCmd;
    project().setCmdParam(idCmd, project().cmdById(idCmd)->device()->normalizeParams(params));
}

QString FormBench::rowText() const
{
    return project().cmdById(idCmd)->device()->paramsText(data(idCmd), m_form.get());
}

void FormBench::reopen()
{
    m_form.reset();
    const QString file = dir().file("saved.prj");
    TCtrlProject control;
    QVERIFY(control.save(file, project()));
    QCOMPARE(control.open(file, project()), 0);
    idCmd = project().cmdsOfCfg(project().cfgIdAt(0)).last()->id();
}

QLineEdit* line(const QWidget& form, int i)
{
    return allOf<QLineEdit>(form).at(i);
}

void showActive(QWidget& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

void click(QWidget* field)
{
    const int x = field->layoutDirection() == Qt::LeftToRight ? 6 : field->width() - 6;
    QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(x, field->height() / 2));
}

void type(QLineEdit* line, const QString& keys)
{
    static const QHash<QChar, Qt::Key> codes{
        {'^', Qt::Key_Up}, {'v', Qt::Key_Down}, {'>', Qt::Key_End}, {'!', Qt::Key_Return}};
    click(line);
    line->selectAll();
    for (const QChar c : keys) {
        if (codes.contains(c))
            QTest::keyClick(line, codes.value(c));
        else
            QTest::keyClicks(line, QString(c));
    }
}

void enter(QLineEdit* line, const QString& keys)
{
    type(line, keys);
    line->clearFocus();
}

void choose(QComboBox* box, const QString& text)
{
    box->clearFocus();
    box->setFocus();
    const int wanted = box->findText(text);
    QVERIFY2(wanted >= 0, qPrintable(text));
    while (box->currentIndex() != wanted)
        QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}
