#include "forms/FormBench.h"

#include "core/IDevice.h"
#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "forms/TWgtEditBase.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

QString listed(const TData& params, QStringList keys)
{
    QStringList pairs;
    keys.sort();
    for (const QString& word : qAsConst(keys))
        pairs << word + QLatin1Char('=') + params.value(word).toString();
    return pairs.join(QLatin1Char(' '));
}

void pressKeys(QLineEdit* line, const QString& keys)
{
    line->setFocus();
    for (const QString& key : keys.split(QLatin1Char(' ')))
        QTest::keyClick(line, key == QLatin1String("Up")     ? Qt::Key_Up
                              : key == QLatin1String("Down") ? Qt::Key_Down
                                                             : Qt::Key_Asterisk);
}

} // namespace

FormBench::FormBench()
{
    setFormFactory(&m_factory);
    setFormHost(this);
}

FormBench::~FormBench()
{
    m_form.reset();
    setFormHost(nullptr);
    setFormFactory(nullptr);
}

void FormBench::addShippedChip(const QString& chip)
{
    setProg("[SPI_FLASH]\nCLK_LIST=true\nCLK_MIN=1000\nCLK_MAX=9000000\nCLKLV_1000000=1\nCLKLV_8000000=2\n"
            "[AVR_SPI]\nCLK_MIN=1000\nCLK_MAX=9000000\nCLK_DEF=5000\n"
            "[I2C_EEPROM]\nCLK_MIN=1000\nCLK_MAX=400000\n");
    project().setCatalogue(&deviceList());
    appData().PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    addProg();
    add(cmd::set_device, {{key::device, chip}, {key::file, TDeviceList::deviceFiles().value(chip)}});
}

void FormBench::open(const QString& word, const TData& params)
{
    idCmd = add(word, params);
    project().clearChanged();
    m_form.reset(project().cmdById(idCmd)->device()->createForm(data(idCmd)));
    QVERIFY(m_form);
    connect(m_form.get(), SIGNAL(signalChangedCmdParam(TData)), this, SLOT(store(TData)));
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get())); // only then can a field have the focus
    QVERIFY(!project().isChanged());
}

void FormBench::open(const QString& command)
{
    TData params;
    QStringList words = command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QString word = words.takeFirst();
    for (const QString& pair : qAsConst(words))
        params[pair.section(QLatin1Char('='), 0, 0)] = pair.section(QLatin1Char('='), 1).replace('~', ' ');
    open(word, params);
}

void FormBench::act(const QString& step)
{
    const QString kind = step.section(QLatin1Char(' '), 0, 0);
    const int i = step.section(QLatin1Char(' '), 1, 1).toInt();
    const QString text = step.section(QLatin1Char(' '), 2);
    QLineEdit* line = part<TWgtEditBase>(i) ? part<TWgtEditBase>(i)->lineEdit() : nullptr;
    if (kind == QLatin1String("type"))
        type(line, text);
    else if (kind == QLatin1String("leave"))
        QTest::mouseClick(line, Qt::LeftButton), line->clearFocus();
    else if (kind == QLatin1String("keys"))
        pressKeys(line, text);
    else if (kind == QLatin1String("choose"))
        choose(part<QComboBox>(i), text);
    else if (kind == QLatin1String("check"))
        QTest::mouseClick(part<QCheckBox>(i), Qt::LeftButton, {},
                          QPoint(6, part<QCheckBox>(i)->height() / 2));
    else if (kind == QLatin1String("press")) {
        QPushButton* button = part<QPushButton>(i);
        button->setText(QLatin1Char('&') + button->text());
        QTest::mouseClick(button, Qt::LeftButton);
    } else
        QFAIL(qPrintable(step));
}

void FormBench::store(TData params)
{
    QCOMPARE(params.take(key::id_cmd).toInt(), idCmd);
    m_reports << listed(params, params.keys());
    params[key::id_cmd] = idCmd;
    project().setCmdParam(idCmd, project().cmdById(idCmd)->device()->normalizeParams(params));
}

QStringList FormBench::reports()
{
    QStringList reports;
    reports.swap(m_reports);
    return reports;
}

QString FormBench::stored(const QStringList& keys) const
{
    return listed(data(idCmd), keys);
}

QString FormBench::rowText() const
{
    return project().cmdById(idCmd)->device()->paramsText(data(idCmd), m_form.get());
}

void FormBench::reopen()
{
    m_form.reset();
    const QString file = dir().file(QStringLiteral("saved.prj"));
    TCtrlProject control;
    QVERIFY(control.save(file, project()));
    QCOMPARE(control.open(file, project()), 0);
    idCmd = project().cmdsOfCfg(project().cfgIdAt(0)).last()->id();
}

bool FormBench::editRoute(TRoute& edited, bool, const TPairStringList&, QWidget*)
{
    offered = edited;
    edited = route;
    return answer(agree);
}

QAction* FormBench::action(const QString& text, const QString&, QWidget* widget)
{
    return new QAction(text, widget);
}

void type(QLineEdit* line, const QString& text)
{
    QTest::mouseClick(line, Qt::LeftButton);
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
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
