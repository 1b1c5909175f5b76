#include "core/model/TCmdList.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"

#include <algorithm>
#include <iterator>

namespace {

bool setsProg(const TDataCmd* command)
{
    return command->cmd() == cmd::set_prog;
}

bool setsProgOrChip(const TDataCmd* command)
{
    const QString word = command->cmd();
    return word == cmd::set_prog || word == cmd::set_device;
}

} // namespace

TCmdList::~TCmdList()
{
    freeAll();
}

void TCmdList::freeAll()
{
    qDeleteAll(m_commands);
    qDeleteAll(m_parked);
    m_commands.clear();
    m_parked.clear();
    m_byId.clear();
    m_countOfCfg.clear();
    m_places.clear();
    TDataCmd::resetCounter();
}

QList<TDataCmd*> TCmdList::ofCfg(int id_cfg) const
{
    QList<TDataCmd*> list;
    std::copy_if(m_commands.cbegin(), m_commands.cend(), std::back_inserter(list),
                 [id_cfg](const TDataCmd* command) { return command->cfgId() == id_cfg; });
    return list;
}

QStringList TCmdList::keys() const
{
    QStringList keys;
    for (const TDataCmd* command : m_commands)
        keys.append(command->cmd());
    return keys;
}

bool TCmdList::hasInvalidDev(int id_cfg) const
{
    return std::any_of(m_commands.cbegin(), m_commands.cend(), [id_cfg](const TDataCmd* command) {
        return command->cfgId() == id_cfg && !command->validDev();
    });
}

bool TCmdList::hasEnabled(int id_cfg) const
{
    return std::any_of(m_commands.cbegin(), m_commands.cend(), [id_cfg](const TDataCmd* command) {
        return command->cfgId() == id_cfg && command->status();
    });
}

void TCmdList::insert(TDataCmd* command, int index, const QList<TDataCfg*>& configurations)
{
    const int id_cfg = command->cfgId();
    m_commands.insert(indexForNew(id_cfg, index, configurations), command);
    m_byId.insert(command->id(), command);
    ++m_countOfCfg[id_cfg];
    m_places.clear();
}

/// The walks and the saved positions rely on blocks in the order of the tabs.
int TCmdList::indexForNew(int id_cfg, int index, const QList<TDataCfg*>& configurations) const
{
    const int size = m_commands.size();
    const int wanted = index < 0 || index > size ? size : index;
    if (wanted == size && !configurations.isEmpty() && configurations.last()->id() == id_cfg)
        return size;
    int first = 0;
    for (const TDataCfg* configuration : configurations) {
        if (configuration->id() == id_cfg) {
            first = qMin(first, size);
            return qBound(first, wanted, first + m_countOfCfg.value(id_cfg));
        }
        first += m_countOfCfg.value(configuration->id());
    }
    return wanted;
}

bool TCmdList::move(int id_cmd, int delta)
{
    const int from = indexOf(id_cmd);
    const qint64 to = qint64(from) + delta;
    if (from < 0 || to < 0 || to >= m_commands.size())
        return false;
    const int target = static_cast<int>(to);
    if (m_commands.at(from)->cfgId() != m_commands.at(target)->cfgId())
        return false;
    m_commands.move(from, target);
    m_places.clear();
    return true;
}

void TCmdList::sort(const QList<TDataCfg*>& configurations)
{
    const int size = configurations.size();
    QHash<int, int> turn;
    for (int i = 0; i < size; ++i)
        turn.insert(configurations.at(i)->id(), i);
    std::stable_sort(m_commands.begin(), m_commands.end(), [&](const TDataCmd* a, const TDataCmd* b) {
        return turn.value(a->cfgId(), size) < turn.value(b->cfgId(), size);
    });
    m_places.clear();
}

bool TCmdList::remove(int id_cmd)
{
    TDataCmd* command = m_byId.take(id_cmd);
    if (!command)
        return false;
    m_commands.removeOne(command);
    --m_countOfCfg[command->cfgId()];
    m_parked.append(command);
    m_places.clear();
    return true;
}

void TCmdList::removeIf(const TWhich& leaves)
{
    QList<TDataCmd*> stay;
    stay.reserve(m_commands.size());
    for (int i = 0; i < m_commands.size(); ++i) {
        TDataCmd* command = m_commands.at(i);
        if (!leaves(i, command)) {
            stay.append(command);
            continue;
        }
        m_byId.remove(command->id());
        --m_countOfCfg[command->cfgId()];
        m_parked.append(command);
    }
    m_commands.swap(stay);
    m_places.clear();
}

void TCmdList::removeOfChip(int index, const std::function<void()>& before)
{
    const TDataCmd* command = value(index);
    const int begin = command ? progOrChipBefore(command->cfgId(), index) : -1;
    if (begin < 0)
        return;
    before();
    const int end = endOfChip(begin);
    removeIf(
        [begin, end](int i, const TDataCmd* own) { return i > begin && i < end && isOfChip(own->cmd()); });
}

TCmdList::TPlace TCmdList::placeOf(int id_cmd) const
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

template <typename Predicate> int TCmdList::walkBack(int id_cfg, int index, const Predicate& stops) const
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

int TCmdList::progBefore(int id_cfg, int index) const
{
    return walkBack(id_cfg, index, setsProg);
}

int TCmdList::progOrChipBefore(int id_cfg, int index) const
{
    return walkBack(id_cfg, index, setsProgOrChip);
}

int TCmdList::validChipBefore(int id_cfg, int index) const
{
    return walkBack(id_cfg, index, [](const TDataCmd* command) {
        return command->cmd() == cmd::set_device && command->validDev();
    });
}

int TCmdList::endOfChip(int index) const
{
    const int id_cfg = m_commands.at(index)->cfgId();
    int i = index + 1;
    for (; i < m_commands.size(); ++i) {
        const TDataCmd* command = m_commands.at(i);
        if (command->cfgId() != id_cfg || setsProgOrChip(command))
            break;
    }
    return i;
}

bool TCmdList::dependsOnDevice(int index) const
{
    if (!value(index))
        return false;
    return std::any_of(m_commands.cbegin() + index + 1, m_commands.cbegin() + endOfChip(index),
                       [](const TDataCmd* command) { return isOfChip(command->cmd()); });
}

TDataCmd* TCmdList::next(int id_cfg, int id_cmd) const
{
    const int before = id_cmd < 0 ? -1 : indexOf(id_cmd);
    // A command that is gone must not send the run back to the start.
    if (id_cmd >= 0 && before < 0)
        return nullptr;
    const auto it =
        std::find_if(m_commands.cbegin() + before + 1, m_commands.cend(), [id_cfg](const TDataCmd* command) {
            return command->cfgId() == id_cfg && command->status();
        });
    return it == m_commands.cend() ? nullptr : *it;
}

TRunStep TCmdList::nextStep(int id_cfg, int id_cmd) const
{
    TRunStep step;
    if (id_cmd >= 0 && indexOf(id_cmd) < 0) {
        step.state = TRunStep::State::Gone;
    } else if (const TDataCmd* command = next(id_cfg, id_cmd)) {
        step.state = TRunStep::State::Found;
        step.data = command->toData();
        step.device = command->device();
        step.validDev = command->validDev();
        step.validParam = command->validParam();
    }
    return step;
}

bool TCmdList::isOfChip(const QString& word)
{
    return !TCmdCode::isTools(word) && !TCmdCode::isProg(word);
}
