#include "console/TRunView.h"

#include "console/TRunOutput.h"

TRunView::TRunView(int id_cfg, const QString& name, TRunOutput& output)
    : m_idCfg(id_cfg)
    , m_name(name)
    , m_output(output)
{
}

TRunView::~TRunView() = default;

void TRunView::runBegins()
{
    m_output.addConfig(m_idCfg);
}

void TRunView::runStopped()
{
    m_output.stopped(m_name);
}

void TRunView::runEnded() {}

void TRunView::slotExecEventText(TCodeExec code, const QString& text1, const QString& text2)
{
    m_output.line(m_name, code, text1, text2);
}

void TRunView::slotExecEventProc(int procent)
{
    m_output.progress(m_name, procent);
}
