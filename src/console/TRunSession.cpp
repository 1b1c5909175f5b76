#include "console/TRunSession.h"

#include "base/TLang.h"
#include "console/print.h"
#include "core/files/TCtrlProject.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"

#include <QCoreApplication>

#include <unistd.h>

namespace {

constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

} // namespace

TRunSession::TRunSession(const TArguments& arguments)
    : m_arguments(arguments)
    , m_output(arguments.events)
    , m_input(STDIN_FILENO)
    , m_control([this](int id_cfg) { return viewOf(id_cfg); })
{
    connect(&m_control, &TRunControl::signalStatusChanged, this, &TRunSession::statusChanged);
    connect(&m_control, &TRunControl::signalIdle, qApp, &QCoreApplication::quit);
    connect(&m_input, &TPauseInput::signalLine, this, &TRunSession::resumePaused);
    connect(&m_input, &TPauseInput::signalEnded, this, &TRunSession::stopPaused);
}

TRunSession::~TRunSession() = default;

int TRunSession::run()
{
    if (!setPorts() || !open() || !findConfigs())
        return exitUsage;
    m_interrupt = std::make_unique<TInterrupt>();
    connect(m_interrupt.get(), &TInterrupt::signalInterrupted, this, &TRunSession::interrupted);
    if (m_arguments.hexLinear)
        appData().HexLinear = true;
    QMetaObject::invokeMethod(
        this, [this] { startAll(); }, Qt::QueuedConnection);
    QCoreApplication::exec();
    return finish();
}

bool TRunSession::setPorts() const
{
    TProgName& programmers = appData().progNames;
    for (const auto& [alias, port] : m_arguments.ports) {
        if (!programmers.contains(alias)) {
            printError(QStringLiteral("there is no programmer \"%1\"").arg(alias));
            return false;
        }
        const TProgRecord record = programmers.record(alias);
        programmers.append(alias, record.enabled, port, record.type);
    }
    return true;
}

bool TRunSession::open()
{
    TCtrlProject control;
    if (control.open(m_arguments.project, project()) == 0)
        return true;
    printError(QStringLiteral("%1: %2").arg(m_arguments.project, control.errorText()));
    return false;
}

bool TRunSession::findConfigs()
{
    const QStringList names = project().cfgNames();
    for (const QString& name : m_arguments.configs) {
        if (!names.contains(name)) {
            printError(QStringLiteral("there is no configuration \"%1\" in %2; there are: %3")
                           .arg(name, m_arguments.project, names.join(QStringLiteral(", "))));
            return false;
        }
        m_configs.append(project().cfgIdByName(name));
    }
    if (names.isEmpty()) {
        printError(QStringLiteral("%1 has no configuration").arg(m_arguments.project));
        return false;
    }
    if (m_configs.isEmpty())
        m_configs.append(project().cfgIdAt(0));
    return true;
}

void TRunSession::startAll()
{
    // All of them take part before the first line comes, so that none stands without its name.
    for (int id_cfg : m_configs)
        m_output.addConfig(id_cfg);
    for (int id_cfg : m_configs)
        m_control.start(id_cfg);
}

IRunView* TRunSession::viewOf(int id_cfg)
{
    if (project().indexCfg(id_cfg) < 0)
        return nullptr;
    std::unique_ptr<TRunView>& view = m_views[id_cfg];
    if (!view)
        view = std::make_unique<TRunView>(id_cfg, project().cfgName(id_cfg), m_output);
    return view.get();
}

// The worker waits while this runs, so every answer to it is put off.
void TRunSession::statusChanged(int id_cfg, int status)
{
    m_output.status(project().cfgName(id_cfg), status);
    if (status == csFailed)
        m_failed = true;
    else if (status == csPause)
        paused(id_cfg);
    if (pausedConfigs().isEmpty())
        m_input.dropWish();
    // A run that another one has started behind the stop.
    if (m_interrupted && status == csRun)
        stopLater(id_cfg);
}

void TRunSession::paused(int id_cfg)
{
    if (m_arguments.resume) {
        QMetaObject::invokeMethod(
            this, [this, id_cfg] { m_control.resume(id_cfg); }, Qt::QueuedConnection);
    } else if (m_input.hasEnded()) {
        stopLater(id_cfg);
    } else {
        if (isatty(STDIN_FILENO) == 1)
            m_output.note(QStringLiteral("press Enter to go on"));
        m_input.want();
    }
}

void TRunSession::interrupted()
{
    m_interrupted = true;
    m_output.note(langText(Text::WaitingForRuns));
    m_control.stopAll();
}

QList<int> TRunSession::pausedConfigs() const
{
    QList<int> ids;
    for (const TDataCfg* config : project().cfgList()) {
        if (config->status() == csPause)
            ids.append(config->id());
    }
    return ids;
}

void TRunSession::resumePaused()
{
    const QList<int> ids = pausedConfigs();
    for (int id_cfg : ids)
        m_control.resume(id_cfg);
}

void TRunSession::stopPaused()
{
    const QList<int> ids = pausedConfigs();
    for (int id_cfg : ids)
        m_control.stop(id_cfg);
}

void TRunSession::stopLater(int id_cfg)
{
    QMetaObject::invokeMethod(
        this, [this, id_cfg] { m_control.stop(id_cfg); }, Qt::QueuedConnection);
}

int TRunSession::finish()
{
    int exitCode = m_interrupted ? TInterrupt::exitCode : m_failed ? exitFailed : 0;
    if (m_arguments.save && project().isChanged()) {
        TCtrlProject control;
        // Nobody is there to ask: what somebody else has saved during the run stays.
        if (project().isFileOutdated() || !control.save(m_arguments.project, project())) {
            const QString reason = control.errorText();
            printError(reason.isEmpty() ? langText(Text::NotSavedOutdated).arg(m_arguments.project)
                                        : QStringLiteral("%1: %2").arg(m_arguments.project, reason));
            exitCode = exitCode == 0 ? exitFailed : exitCode;
        }
    }
    m_output.end(exitCode);
    return exitCode;
}
