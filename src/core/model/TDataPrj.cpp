#include "core/model/TDataPrj.h"

#include "base/TCmdCode.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/IDeviceCatalogue.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/shared_settings.h"
#include "link/lists/AutoList.h"
#include "link/lists/TProg.h"
#include "settings/TAppData.h"

#include <QFileInfo>
#include <QMutexLocker>

#include <algorithm>

namespace {

// Entries of the list of families share the cache with the chips and may be named like one.
const QLatin1String autoPrefix("auto.lst|");

bool isClassWord(const QString& name)
{
    constexpr QLatin1String words[] = {dev_class::avr8_spi, dev_class::dev25, dev_class::dev24,
                                       dev_class::prog, dev_class::tools};
    return std::find(std::begin(words), std::end(words), name) != std::end(words);
}

bool isOfChip(const QString& word)
{
    return !TCmdCode::isTools(word) && !TCmdCode::isProg(word);
}

int hexDigits(const QVariant& value)
{
    const QString text = value.toString();
    return static_cast<int>(std::count_if(text.cbegin(), text.cend(), [](QChar c) { return !c.isSpace(); }));
}

template <typename List, typename Item> void park(List& list, QList<Item*>& parked)
{
    for (Item* item : qAsConst(list)) {
        if (item)
            parked.append(item);
    }
    list.clear();
}

} // namespace

TDataPrj::TDataPrj()
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
    m_catalogue = catalogue;
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
    park(m_commands, m_parkedCmds);
    park(m_configurations, m_parkedCfgs);
    clearCaches();
    m_cmdById.clear();
    m_cmdCountOfCfg.clear();
    m_places.clear();
    qDeleteAll(m_parkedCmds);
    qDeleteAll(m_parkedCfgs);
    qDeleteAll(m_parkedDevices);
    qDeleteAll(m_parkedProgs);
    m_parkedCmds.clear();
    m_parkedCfgs.clear();
    m_parkedDevices.clear();
    m_parkedProgs.clear();
    TDataCmd::resetCounter();
    TDataCfg::resetCounter();
}

void TDataPrj::clearCaches()
{
    const QMutexLocker lock(&m_mutex);
    park(m_devices, m_parkedDevices);
    park(m_progs, m_parkedProgs);
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
    auto* configuration = new TDataCfg(name, description);
    const int size = m_configurations.size();
    m_configurations.insert(index < 0 || index > size ? size : index, configuration);
    return configuration->id();
}

void TDataPrj::removeCfg(int id_cfg)
{
    const QMutexLocker lock(&m_mutex);
    const int index = indexCfg(id_cfg);
    if (index < 0)
        return;
    setChanged();
    removeCmdsOfCfg(id_cfg);
    m_parkedCfgs.append(m_configurations.takeAt(index));
}

void TDataPrj::moveCfg(int from, int to)
{
    const QMutexLocker lock(&m_mutex);
    const int size = m_configurations.size();
    if (from < 0 || to < 0 || from >= size || to >= size)
        return;
    setChanged();
    m_configurations.move(from, to);
    QHash<int, int> turn;
    for (int i = 0; i < size; ++i)
        turn.insert(m_configurations.at(i)->id(), i);
    std::stable_sort(m_commands.begin(), m_commands.end(), [&](const TDataCmd* a, const TDataCmd* b) {
        return turn.value(a->cfgId(), size) < turn.value(b->cfgId(), size);
    });
    m_places.clear();
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
    return m_configurations.value(indexCfg(id_cfg));
}

int TDataPrj::indexCfg(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    const auto it = std::find_if(m_configurations.cbegin(), m_configurations.cend(),
                                 [id_cfg](const TDataCfg* cfg) { return cfg->id() == id_cfg; });
    return it == m_configurations.cend() ? -1 : static_cast<int>(it - m_configurations.cbegin());
}

int TDataPrj::cfgIdAt(int index) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCfg* configuration = m_configurations.value(index);
    return configuration ? configuration->id() : -1;
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
    QStringList names;
    for (const TDataCfg* configuration : m_configurations)
        names.append(configuration->name());
    return names;
}

QList<TDataCfg*> TDataPrj::cfgList() const
{
    const QMutexLocker lock(&m_mutex);
    return m_configurations;
}

int TDataPrj::addCmd(const TData& data, int index)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    auto* command = new TDataCmd(data);
    const int id_cfg = command->cfgId();
    m_commands.insert(indexForNew(id_cfg, index), command);
    m_cmdById.insert(command->id(), command);
    ++m_cmdCountOfCfg[id_cfg];
    m_places.clear();
    return command->id();
}

/// The walks and the saved positions rely on blocks in the order of the tabs.
int TDataPrj::indexForNew(int id_cfg, int index) const
{
    const int size = m_commands.size();
    const int wanted = index < 0 || index > size ? size : index;
    const bool isLast = !m_configurations.isEmpty() && m_configurations.last()->id() == id_cfg;
    if (wanted == size && isLast)
        return size;
    if (indexCfg(id_cfg) < 0)
        return wanted;
    const int first = firstPlaceFor(id_cfg);
    return qBound(first, wanted, first + m_cmdCountOfCfg.value(id_cfg));
}

int TDataPrj::firstPlaceFor(int id_cfg) const
{
    int first = 0;
    for (const TDataCfg* configuration : m_configurations) {
        if (configuration->id() == id_cfg)
            break;
        first += m_cmdCountOfCfg.value(configuration->id());
    }
    return qMin(first, m_commands.size());
}

void TDataPrj::moveCmd(int id_cmd, int delta)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    const int from = indexCmd(id_cmd);
    const qint64 to = qint64(from) + delta;
    if (from < 0 || to < 0 || to >= m_commands.size())
        return;
    const int target = static_cast<int>(to);
    if (m_commands.at(from)->cfgId() != m_commands.at(target)->cfgId())
        return;
    m_commands.move(from, target);
    m_places.clear();
    bindAll();
}

void TDataPrj::removeCmd(int id_cmd)
{
    const QMutexLocker lock(&m_mutex);
    TDataCmd* command = m_cmdById.take(id_cmd);
    if (!command)
        return;
    setChanged();
    m_commands.removeOne(command);
    --m_cmdCountOfCfg[command->cfgId()];
    m_parkedCmds.append(command);
    m_places.clear();
}

void TDataPrj::removeCmdsOfCfg(int id_cfg)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    takeOutIf([id_cfg](int, const TDataCmd* command) { return command->cfgId() == id_cfg; });
}

void TDataPrj::removeDeviceCmds(int id_cmd)
{
    const QMutexLocker lock(&m_mutex);
    const int index = indexCmd(id_cmd);
    if (index < 0)
        return;
    const int begin = walkBack(m_commands.at(index)->cfgId(), index, [](const TDataCmd* command) {
        return command->cmd() == cmd::set_prog || command->cmd() == cmd::set_device;
    });
    if (begin < 0)
        return;
    setChanged();
    const int end = endOfChip(begin);
    takeOutIf([begin, end](int i, const TDataCmd* command) {
        return i > begin && i < end && isOfChip(command->cmd());
    });
}

template <typename Predicate> void TDataPrj::takeOutIf(const Predicate& leaves)
{
    QList<TDataCmd*> stay;
    stay.reserve(m_commands.size());
    for (int i = 0; i < m_commands.size(); ++i) {
        TDataCmd* command = m_commands.at(i);
        if (!leaves(i, command)) {
            stay.append(command);
            continue;
        }
        m_cmdById.remove(command->id());
        --m_cmdCountOfCfg[command->cfgId()];
        m_parkedCmds.append(command);
    }
    m_commands.swap(stay);
    m_places.clear();
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
    return m_cmdById.value(id_cmd);
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

TDataPrj::TPlace TDataPrj::placeOf(int id_cmd) const
{
    if (m_places.isEmpty()) {
        int row = 0;
        for (int i = 0; i < m_commands.size(); ++i) {
            const TDataCmd* command = m_commands.at(i);
            row = i > 0 && m_commands.at(i - 1)->cfgId() == command->cfgId() ? row + 1 : 0;
            m_places.insert(command->id(), {i, row});
        }
    }
    return m_places.value(id_cmd);
}

int TDataPrj::indexCmd(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return placeOf(id_cmd).index;
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
    QStringList keys;
    for (const TDataCmd* command : m_commands)
        keys.append(command->cmd());
    return keys;
}

QList<TDataCmd*> TDataPrj::cmdsOfCfg(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    QList<TDataCmd*> list;
    std::copy_if(m_commands.cbegin(), m_commands.cend(), std::back_inserter(list),
                 [id_cfg](const TDataCmd* command) { return command->cfgId() == id_cfg; });
    return list;
}

QList<TDataCmd*> TDataPrj::cmdList() const
{
    const QMutexLocker lock(&m_mutex);
    return m_commands;
}

bool TDataPrj::hasInvalidDev(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return std::any_of(m_commands.cbegin(), m_commands.cend(), [id_cfg](const TDataCmd* command) {
        return command->cfgId() == id_cfg && !command->validDev();
    });
}

bool TDataPrj::hasEnabled(int id_cfg) const
{
    const QMutexLocker lock(&m_mutex);
    return std::any_of(m_commands.cbegin(), m_commands.cend(), [id_cfg](const TDataCmd* command) {
        return command->cfgId() == id_cfg && command->status();
    });
}

int TDataPrj::rowInCfg(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = cmdById(id_cmd);
    return command && command->cfgId() == id_cfg ? placeOf(id_cmd).row : -1;
}

TDataCmd* TDataPrj::nextCmd(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const int before = id_cmd < 0 ? -1 : indexCmd(id_cmd);
    // A command that is gone must not send the run back to the start.
    if (id_cmd >= 0 && before < 0)
        return nullptr;
    const auto it =
        std::find_if(m_commands.cbegin() + before + 1, m_commands.cend(), [id_cfg](const TDataCmd* command) {
            return command->cfgId() == id_cfg && command->status();
        });
    return it == m_commands.cend() ? nullptr : *it;
}

TRunStep TDataPrj::nextStep(int id_cfg, int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    TRunStep step;
    if (indexCfg(id_cfg) < 0 || (id_cmd >= 0 && indexCmd(id_cmd) < 0)) {
        step.state = TRunStep::State::Gone;
    } else if (const TDataCmd* command = nextCmd(id_cfg, id_cmd)) {
        step.state = TRunStep::State::Found;
        step.data = command->toData();
        step.device = command->device();
        step.validDev = command->validDev();
        step.validParam = command->validParam();
    }
    return step;
}

template <typename Predicate> int TDataPrj::walkBack(int id_cfg, int index, const Predicate& stops) const
{
    for (int i = qMin(index, m_commands.size() - 1); i >= 0; --i) {
        const TDataCmd* command = m_commands.at(i);
        if (command->cfgId() != id_cfg)
            break;
        if (stops(command))
            return i;
    }
    return -1;
}

QString TDataPrj::progBefore(int id_cfg, int index) const
{
    const QMutexLocker lock(&m_mutex);
    const int at = walkBack(id_cfg, index, [](const TDataCmd* c) { return c->cmd() == cmd::set_prog; });
    return at >= 0 && m_commands.at(at)->validDev() ? m_commands.at(at)->param(key::prog).toString()
                                                    : QString();
}

QString TDataPrj::deviceBefore(int id_cfg, int index) const
{
    const QMutexLocker lock(&m_mutex);
    const int at = walkBack(id_cfg, index, [](const TDataCmd* command) {
        return command->cmd() == cmd::set_device || command->cmd() == cmd::set_prog;
    });
    return at >= 0 && m_commands.at(at)->cmd() == cmd::set_device
               ? m_commands.at(at)->param(key::device).toString()
               : QString();
}

QString TDataPrj::classOfCmd(int id_cfg, int index, const QString& cmd) const
{
    if (TCmdCode::isTools(cmd))
        return dev_class::tools;
    if (TCmdCode::isProg(cmd))
        return dev_class::prog;
    const QMutexLocker lock(&m_mutex);
    const int at = walkBack(id_cfg, index, [](const TDataCmd* command) {
        return command->cmd() == cmd::set_device && command->validDev();
    });
    return at >= 0 ? m_commands.at(at)->param(key::device).toString() : QString();
}

int TDataPrj::indexProgBefore(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    return walkBack(cfgOfCmd(id_cmd), indexCmd(id_cmd),
                    [](const TDataCmd* command) { return command->cmd() == cmd::set_prog; });
}

int TDataPrj::indexProgDeviceBefore(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const int at = walkBack(cfgOfCmd(id_cmd), indexCmd(id_cmd), [](const TDataCmd* command) {
        return command->cmd() == cmd::set_device || command->cmd() == cmd::set_prog;
    });
    return at >= 0 && m_commands.at(at)->cmd() == cmd::set_device ? at : -1;
}

int TDataPrj::endOfChip(int index) const
{
    const int id_cfg = m_commands.at(index)->cfgId();
    int i = index + 1;
    for (; i < m_commands.size(); ++i) {
        const TDataCmd* command = m_commands.at(i);
        const QString word = command->cmd();
        if (command->cfgId() != id_cfg || word == cmd::set_prog || word == cmd::set_device)
            break;
    }
    return i;
}

bool TDataPrj::dependsOnDevice(int index) const
{
    const QMutexLocker lock(&m_mutex);
    if (!cmdInList(index))
        return false;
    return std::any_of(m_commands.cbegin() + index + 1, m_commands.cbegin() + endOfChip(index),
                       [](const TDataCmd* command) { return isOfChip(command->cmd()); });
}

TDataCmd* TDataPrj::cmdInList(int index) const
{
    return m_commands.value(index);
}

QStringList TDataPrj::familyCmdList(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = cmdById(id_cmd);
    const IDevice* family = command ? command->family() : nullptr;
    return family ? family->commandKeys() : QStringList();
}

QStringList TDataPrj::progCmdList(int id_cmd) const
{
    const QMutexLocker lock(&m_mutex);
    const TDataCmd* command = cmdById(id_cmd);
    const TProg* prog = command ? command->prog() : nullptr;
    if (!prog)
        return {};
    QStringList list = TCmdCode::progKeys();
    const auto end = std::remove_if(list.begin(), list.end(), [prog](const QString& word) {
        // Choosing a chip asks nothing of the programmer's description.
        return word != cmd::set_device && word != cmd::auto_detect && !prog->supportsCommand(word);
    });
    list.erase(end, list.end());
    return list;
}

IDevice* TDataPrj::deviceFor(const QString& name, const QString& file)
{
    const QMutexLocker lock(&m_mutex);
    return lookUp(name, name, file);
}

IDevice* TDataPrj::lookUp(const QString& cacheKey, const QString& name, const QString& file)
{
    if (name.isEmpty())
        return nullptr;
    const auto hit = m_devices.constFind(cacheKey);
    if (hit != m_devices.cend())
        return hit.value();
    const QString question = cacheKey + QLatin1Char('\n') + file;
    if (!m_catalogue || (m_isSweep && m_failedLookups.contains(question)))
        return nullptr;
    IDevice* device = m_catalogue->create(name, file);
    if (device)
        m_devices.insert(cacheKey, device);
    else if (m_isSweep)
        m_failedLookups.insert(question);
    return device;
}

/// A class word is no chip: without a file it would make the class itself, empty.
IDevice* TDataPrj::chip(const QString& name, const QString& file)
{
    return isClassWord(name) ? nullptr : lookUp(name, name, file);
}

IDevice* TDataPrj::autoFamily(const QString& name)
{
    const QString cacheKey = autoPrefix + name;
    const auto hit = m_devices.constFind(cacheKey);
    if (hit != m_devices.cend())
        return hit.value();
    if (name.isEmpty() || (m_isSweep && m_failedLookups.contains(cacheKey)))
        return nullptr;
    const QString file = autoDeviceFile(devicesFolder(), name);
    IDevice* device = file.isEmpty() ? nullptr : lookUp(cacheKey, name, file);
    if (!device && m_isSweep)
        m_failedLookups.insert(cacheKey);
    return device;
}

TProg* TDataPrj::prog(const QString& name)
{
    const QMutexLocker lock(&m_mutex);
    const auto hit = m_progs.constFind(name);
    if (hit != m_progs.cend())
        return hit.value();
    const TAppData& app = appData();
    const QString type = app.progNames.record(name).type;
    if (name.isEmpty() || !app.progNames.contains(name) || !app.progTypes.contains(type))
        return nullptr;
    const QString file = absFile(app.PathProgs, app.progTypes.file(type));
    if (!QFileInfo(file).isFile())
        return nullptr;
    auto* prog = new TProg(file);
    m_progs.insert(name, prog);
    return prog;
}

bool TDataPrj::isUsable(const QString& prog) const
{
    const TAppData& app = appData();
    const TProgRecord record = app.progNames.record(prog);
    return record.enabled && app.progTypes.contains(record.type);
}

TDataPrj::TInForce TDataPrj::inForceAt(int index)
{
    const TDataCmd* command = m_commands.at(index);
    const int id_cfg = command->cfgId();
    TInForce inForce;
    // The word of a chip's own command, whichever: the walk is the same for all of them.
    inForce.owner = chip(classOfCmd(id_cfg, index, QString()), QString());
    inForce.family = chip(deviceBefore(id_cfg, index), QString());
    inForce.prog = prog(progBefore(id_cfg, index));
    return inForce;
}

void TDataPrj::bindCmd(int index)
{
    const QMutexLocker lock(&m_mutex);
    if (TDataCmd* command = cmdInList(index))
        bindTo(*command, inForceAt(index));
}

void TDataPrj::bindAll()
{
    const QMutexLocker lock(&m_mutex);
    m_isSweep = true;
    TInForce inForce;
    int id_cfg = -1;
    for (TDataCmd* command : qAsConst(m_commands)) {
        if (command->cfgId() != id_cfg) {
            id_cfg = command->cfgId();
            inForce = {};
        }
        bindTo(*command, inForce);
        const QString word = command->cmd();
        if (word == cmd::set_prog) {
            inForce.prog = command->validDev() ? command->prog() : nullptr;
            inForce.family = nullptr;
        } else if (word == cmd::set_device) {
            inForce.family = command->family();
            if (command->validDev())
                inForce.owner = command->family();
        }
    }
    m_isSweep = false;
    m_failedLookups.clear();
}

void TDataPrj::bindTo(TDataCmd& command, const TInForce& inForce)
{
    const QString word = command.cmd();
    IDevice* device = inForce.owner;
    IDevice* family = inForce.family;
    TProg* programmer = inForce.prog;
    if (TCmdCode::isTools(word))
        device = lookUp(dev_class::tools, dev_class::tools, QString());
    else if (TCmdCode::isProg(word))
        device = lookUp(dev_class::prog, dev_class::prog, QString());

    bool valid = false;
    if (word == cmd::set_prog) {
        const QString name = command.param(key::prog).toString();
        family = device;
        programmer = prog(name);
        valid = device && programmer && isUsable(name);
    } else if (word == cmd::set_device) {
        family = chip(command.param(key::device).toString(), command.param(key::file).toString());
        valid = device && programmer;
    } else if (word == cmd::auto_detect) {
        family = autoFamily(command.param(key::name).toString());
        valid = device && programmer;
    } else if (TCmdCode::isTools(word)) {
        valid = device && device->hasCommand(word);
    } else if (TCmdCode::isProg(word)) {
        valid = device && device->hasCommand(word) && programmer && programmer->supportsCommand(word);
    } else {
        valid = family && family->hasCommand(word) && programmer && device;
    }
    command.bind(device, family, programmer, valid);
    command.validate();
}

void TDataPrj::normalizeAll()
{
    const QMutexLocker lock(&m_mutex);
    for (TDataCmd* command : qAsConst(m_commands)) {
        if (renew(*command))
            setChanged();
    }
}

/// A chip's defaults replace stored fuses and registers only when the chip is another one than they were
/// made for. A text of the wrong length stays as well: the check finds it, where a default in its place
/// would be written to the chip without a word.
bool TDataPrj::renew(TDataCmd& command)
{
    const IDevice* device = command.device();
    const IDevice* family = command.family();
    if (!device || !family)
        return false;
    if (command.madeFor() != family->name()) {
        command.setMadeFor(family->name());
        return command.normalize();
    }
    const QVariant stored = command.param(key::data);
    TData fresh = command.toData();
    if (!device->refreshParams(fresh))
        return false;
    if (const int digits = hexDigits(stored)) {
        // All three status registers, from before the description told how many there are: the first ones
        // count.
        constexpr int threeRegisters = 6;
        const int wanted = hexDigits(fresh.value(key::data));
        const QByteArray bytes = QByteArray::fromHex(stored.toByteArray());
        if (digits != threeRegisters || bytes.size() * 2 != digits || wanted >= digits ||
            !family->deviceValue(key::status_reg_count).isValid())
            return false;
        fresh.insert(key::data, QString::fromLatin1(bytes.left(wanted / 2).toHex().toUpper()));
    }
    command.fromData(fresh);
    return true;
}

void TDataPrj::validateAll()
{
    const QMutexLocker lock(&m_mutex);
    for (TDataCmd* command : qAsConst(m_commands))
        command->validate();
}

void TDataPrj::markMadeFor()
{
    const QMutexLocker lock(&m_mutex);
    for (TDataCmd* command : qAsConst(m_commands)) {
        if (const IDevice* family = command->family())
            command->setMadeFor(family->name());
    }
}

void TDataPrj::setCmdParam(int id_cmd, const TData& data)
{
    const QMutexLocker lock(&m_mutex);
    setChanged();
    TDataCmd* command = cmdById(id_cmd);
    if (!command)
        return;
    const QString word = command->cmd();
    const auto differs = [&](const QString& key) {
        return data.contains(key) && data.value(key).toString() != command->param(key).toString();
    };
    if (word == cmd::set_device && differs(key::device)) {
        setDeviceParam(*command, data);
    } else if (word == cmd::set_prog) {
        command->setParam(data);
        bindAll();
        validateAll();
    } else if (word == cmd::auto_detect && differs(key::name)) {
        setAutoDetectParam(*command, data);
    } else {
        mergeParam(*command, data);
    }
    emit signalChangeData(cvCmdChanged, command->toData());
}

void TDataPrj::setDeviceParam(TDataCmd& command, const TData& data)
{
    command.clearParam();
    command.setParam(data);
    bindAll();
    TData defaults = command.toData();
    const IDevice* family = command.family();
    if (family && family->setDeviceDefaults(defaults))
        command.setParam(defaults);
    normalizeAll();
    validateAll();
}

void TDataPrj::setAutoDetectParam(TDataCmd& command, const TData& data)
{
    TData kept = data;
    for (const QString& word : {QString(key::stop), QString(key::execute)}) {
        const QVariant old = command.param(word);
        if (old.isValid())
            kept.insert(word, old);
    }
    command.clearParam();
    command.setParam(kept);
    bindCmd(indexCmd(command.id()));
    TData defaults = command.toData();
    const IDevice* family = command.family();
    if (family && family->setDeviceDefaults(defaults))
        command.setParam(defaults);
    command.validate();
}

void TDataPrj::mergeParam(TDataCmd& command, const TData& data)
{
    command.setParam(data);
    const IDevice* family = command.family();
    if (family && data.contains(key::data))
        command.setMadeFor(family->name());
    command.validate();
}
