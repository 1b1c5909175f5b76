#include "core/model/TDataPrj.h"

#include "base/keys.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"

#include <QMutexLocker>

TDataPrj::TDataPrj()
    : m_binder(m_commands, m_devices, m_progs)
{
    clear();
}

TDataPrj::~TDataPrj()
{
    freeAll();
}

void TDataPrj::setCatalogue(IDeviceCatalogue* catalogue)
{
    const QMutexLocker lock(&m_mutex);
    m_devices.setCatalogue(catalogue);
}

bool TDataPrj::isOpen() const
{
    const QMutexLocker lock(&m_mutex);
    return !m_prjFile.isEmpty();
}

bool TDataPrj::isChanged() const
{
    const QMutexLocker lock(&m_mutex);
    return m_changed;
}

void TDataPrj::setChanged()
{
    const QMutexLocker lock(&m_mutex);
    m_changed = true;
    ++m_revision;
    emit signalChangePrj(true);
}

void TDataPrj::clearChanged()
{
    const QMutexLocker lock(&m_mutex);
    m_changed = false;
    emit signalChangePrj(false);
}

quint64 TDataPrj::revision() const
{
    const QMutexLocker lock(&m_mutex);
    return m_revision;
}

void TDataPrj::setStored(quint64 revision, const TFileStamp& stamp)
{
    const QMutexLocker lock(&m_mutex);
    m_stamp = stamp;
    if (revision == m_revision)
        clearChanged();
}

bool TDataPrj::isFileOutdated() const
{
    TFileStamp stamp;
    // Not under the lock: the file is read, and a worker may want its next command.
    locked([&] { stamp = m_stamp; });
    return stamp.isOutdated();
}

void TDataPrj::fromData(const TData& data)
{
    const QMutexLocker lock(&m_mutex);
    m_prjFile = data.value(key::prj_file).toString();
    m_workPath = data.value(key::work_path).toString();
}

TData TDataPrj::toData() const
{
    const QMutexLocker lock(&m_mutex);
    return {{key::prj_file, m_prjFile}, {key::work_path, m_workPath}};
}

void TDataPrj::clear()
{
    const QMutexLocker lock(&m_mutex);
    if (isOpen())
        freeAll();
}

void TDataPrj::reset()
{
    const QMutexLocker lock(&m_mutex);
    freeAll();
}

void TDataPrj::freeAll()
{
    m_changed = false;
    m_stamp = {};
    m_name.clear();
    m_prjFile.clear();
    m_workPath.clear();
    m_commands.freeAll();
    m_configurations.freeAll();
    m_devices.freeAll();
    m_progs.freeAll();
}

void TDataPrj::clearCaches()
{
    const QMutexLocker lock(&m_mutex);
    m_devices.park();
    m_progs.park();
}

QString TDataPrj::name() const
{
    const QMutexLocker lock(&m_mutex);
    return m_name;
}

void TDataPrj::setName(const QString& name)
{
    const QMutexLocker lock(&m_mutex);
    m_name = name;
}

QString TDataPrj::file() const
{
    const QMutexLocker lock(&m_mutex);
    return m_prjFile;
}

void TDataPrj::setFile(const QString& file)
{
    const QMutexLocker lock(&m_mutex);
    m_prjFile = file;
}

QString TDataPrj::workPath() const
{
    const QMutexLocker lock(&m_mutex);
    return m_workPath;
}

void TDataPrj::locked(const std::function<void()>& fn) const
{
    const QMutexLocker lock(&m_mutex);
    fn();
}

int TDataPrj::addCfg(const QString& name, const QString& description, int index)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    return m_configurations.add(name, description, index);
}

void TDataPrj::removeCfg(int id_cfg)
{
    const QMutexLocker lock(&m_mutex);
    const int index = indexCfg(id_cfg);
    if (index < 0)
        return;
    setChanged();
    removeCmdsOfCfg(id_cfg);
    m_configurations.removeAt(index);
}

void TDataPrj::moveCfg(int from, int to)
{
    const QMutexLocker lock(&m_mutex);
    if (!m_configurations.canMove(from, to))
        return;
    setChanged();
    m_configurations.move(from, to);
    m_commands.sort(m_configurations.all());
}

void TDataPrj::setCfgName(int id_cfg, const QString& name)
{
    const QMutexLocker lock(&m_mutex);
    if (TDataCfg* configuration = cfgById(id_cfg)) {
        setChanged();
        configuration->setName(name);
    }
}

void TDataPrj::setCfgDescription(int id_cfg, const QString& text)
{
    const QMutexLocker lock(&m_mutex);
    if (TDataCfg* configuration = cfgById(id_cfg)) {
        setChanged();
        configuration->setDescription(text);
    }
}

void TDataPrj::setCfgStatus(int id_cfg, int status)
{
    const QMutexLocker lock(&m_mutex);
    if (TDataCfg* configuration = cfgById(id_cfg))
        configuration->setStatus(status);
}

int TDataPrj::cfgStatus(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCfg* configuration = cfgById(id_cfg);
    return configuration ? configuration->status() : -1;
}

TDataCfg* TDataPrj::cfgById(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations.byId(id_cfg);
}

int TDataPrj::indexCfg(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations.indexOf(id_cfg);
}

int TDataPrj::cfgIdAt(int index) const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations.idAt(index);
}

QString TDataPrj::cfgName(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCfg* configuration = cfgById(id_cfg);
    return configuration ? configuration->name() : QString();
}

QString TDataPrj::cfgDescription(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCfg* configuration = cfgById(id_cfg);
    return configuration ? configuration->description() : QString();
}

int TDataPrj::cfgIdByName(const QString& name) const
{
    const QMutexLocker lock(&m_mutex);
    return cfgIdAt(cfgNames().indexOf(name));
}

QStringList TDataPrj::cfgNames() const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations.names();
}

QList<TDataCfg*> TDataPrj::cfgList() const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations.all();
}

int TDataPrj::addCmd(const TData& data, int index)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    auto* command = new TDataCmd(data);
    m_commands.insert(command, index, m_configurations.all());
    return command->id();
}

void TDataPrj::moveCmd(int id_cmd, int delta)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    if (m_commands.move(id_cmd, delta))
        bindAll();
}

void TDataPrj::removeCmd(int id_cmd)
{
    const QMutexLocker lock(&m_mutex);
    if (m_commands.remove(id_cmd))
        setChanged();
}

void TDataPrj::removeCmdsOfCfg(int id_cfg)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    m_commands.removeIf([id_cfg](int, const TDataCmd* command) { return command->cfgId() == id_cfg; });
}

void TDataPrj::removeDeviceCmds(int id_cmd)
{
    const QMutexLocker lock(&m_mutex);
    m_commands.removeOfChip(indexCmd(id_cmd), [this] { setChanged(); });
}

void TDataPrj::setCmdStatus(int id_cmd, bool status)
{
    const QMutexLocker lock(&m_mutex);
    if (TDataCmd* command = cmdById(id_cmd)) {
        setChanged();
        command->setStatus(status);
    }
}

void TDataPrj::setCfgCmdStatus(int id_cfg, bool status)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    for (TDataCmd* command : cmdsOfCfg(id_cfg))
        command->setStatus(status);
}

TDataCmd* TDataPrj::cmdById(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.byId(id_cmd);
}

TBinding TDataPrj::binding(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    TDataCmd* command = cmdById(id_cmd);
    return command ? command->binding() : TBinding();
}

TDataCmd* TDataPrj::cmdAt(int index) const
{
    return m_commands.at(index);
}

int TDataPrj::cmdIdAt(int index) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = m_commands.value(index);
    return command ? command->id() : -1;
}

int TDataPrj::cmdCount() const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.size();
}

int TDataPrj::indexCmd(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.indexOf(id_cmd);
}

int TDataPrj::cfgOfCmd(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = cmdById(id_cmd);
    return command ? command->cfgId() : -1;
}

int TDataPrj::indexCfgOfCmd(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return indexCfg(cfgOfCmd(id_cmd));
}

QStringList TDataPrj::commandKeys() const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.keys();
}

QList<TDataCmd*> TDataPrj::cmdsOfCfg(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.ofCfg(id_cfg);
}

QList<TDataCmd*> TDataPrj::cmdList() const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.all();
}

bool TDataPrj::hasInvalidDev(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.hasInvalidDev(id_cfg);
}

bool TDataPrj::hasEnabled(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.hasEnabled(id_cfg);
}

int TDataPrj::rowInCfg(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = cmdById(id_cmd);
    return command && command->cfgId() == id_cfg ? m_commands.rowOf(id_cmd) : -1;
}

TDataCmd* TDataPrj::nextCmd(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.next(id_cfg, id_cmd);
}

TRunStep TDataPrj::nextStep(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    if (indexCfg(id_cfg) >= 0)
        return m_commands.nextStep(id_cfg, id_cmd);
    TRunStep step;
    step.state = TRunStep::State::Gone;
    return step;
}

QString TDataPrj::progBefore(int id_cfg, int index) const
{
    const QMutexLocker lock(&m_mutex);
    return m_binder.progBefore(id_cfg, index);
}

QString TDataPrj::deviceBefore(int id_cfg, int index) const
{
    const QMutexLocker lock(&m_mutex);
    return m_binder.deviceBefore(id_cfg, index);
}

QString TDataPrj::classOfCmd(int id_cfg, int index, const QString& cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return m_binder.classOfCmd(id_cfg, index, cmd);
}

int TDataPrj::indexProgBefore(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.progBefore(cfgOfCmd(id_cmd), indexCmd(id_cmd));
}

int TDataPrj::indexProgDeviceBefore(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const int at = m_commands.progOrChipBefore(cfgOfCmd(id_cmd), indexCmd(id_cmd));
    return at >= 0 && m_commands.at(at)->cmd() == cmd::set_device ? at : -1;
}

bool TDataPrj::dependsOnDevice(int index) const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands.dependsOnDevice(index);
}

QStringList TDataPrj::familyCmdList(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return binding(id_cmd).familyCommands();
}

QStringList TDataPrj::progCmdList(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return binding(id_cmd).progCommands();
}

IDevice* TDataPrj::deviceFor(const QString& name, const QString& file)
{
    const QMutexLocker lock(&m_mutex);
    return m_devices.device(name, file);
}

TProg* TDataPrj::prog(const QString& name)
{
    const QMutexLocker lock(&m_mutex);
    return m_progs.prog(name);
}

void TDataPrj::bindCmd(int index)
{
    const QMutexLocker lock(&m_mutex);
    m_binder.bind(index);
}

void TDataPrj::bindAll()
{
    const QMutexLocker lock(&m_mutex);
    m_binder.bindAll();
}

void TDataPrj::normalizeAll()
{
    const QMutexLocker lock(&m_mutex);
    if (m_binder.normalizeAll())
        setChanged();
}

void TDataPrj::validateAll()
{
    const QMutexLocker lock(&m_mutex);
    m_binder.validateAll();
}

void TDataPrj::markMadeFor()
{
    const QMutexLocker lock(&m_mutex);
    m_binder.markMadeFor();
}

void TDataPrj::setCmdParam(int id_cmd, const TData& data)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    TDataCmd* command = cmdById(id_cmd);
    if (!command)
        return;
    m_binder.setParam(*command, data);
    emit signalChangeData(cvCmdChanged, command->toData());
}
