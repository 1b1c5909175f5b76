#include "forms/FormBench.h"

#include "core/IDevice.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
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

void FormBench::open(const QString& word, const TData& params)
{
    idCmd = add(word, params);
    m_form.reset(project().cmdById(idCmd)->device()->createForm(data(idCmd)));
    QVERIFY(m_form);
    connect(m_form.get(), SIGNAL(signalChangedCmdParam(TData)), this, SLOT(store(TData)));
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    m_form->activateWindow();
    QTest::qWait(1);
}

void FormBench::store(TData params)
{
    QCOMPARE(params.take(key::id_cmd).toInt(), idCmd);
    m_reports << listed(params, params.keys());
    project().setCmdParam(idCmd, params);
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
    const int wanted = box->findText(text);
    QVERIFY2(wanted >= 0, qPrintable(text));
    box->setFocus();
    while (box->currentIndex() != wanted)
        QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}
