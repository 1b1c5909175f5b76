#include "exec/RunBench.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "devices/TDeviceList.h"
#include "support/BenchProject.h"

#include <QFile>

RunBench::RunBench(bool isSilent)
{
    registerMetaTypes();
    lang().load(VM_DATA_DIR "/language/eng.lng");
    appData() = TAppData();
    appData().PathDevices = VM_DATA_DIR "/devices";
    appData().PathProgs = m_dir.path();
    QFile shipped(VM_DATA_DIR "/progs/simulator.cfg");
    if (shipped.open(QIODevice::ReadOnly)) {
        const char* timeout = isSilent ? "TimeOut=400" : "TimeOut=10000";
        m_dir.write("simulator.cfg", shipped.readAll().replace("TimeOut=10000", timeout));
    }
    appData().progTypes.append("Simulator", "simulator.cfg");
    project().reset();
    project().fromData({{key::prj_file, m_dir.file("bench.prj")}, {key::work_path, m_dir.path()}});
    m_control = std::make_unique<TRunControl>([this](int id) { return &view(id); });
}

RunBench::~RunBench()
{
    m_control->stopAll();
    waitIdle();
    m_control.reset();
    project().reset();
}

int RunBench::addCmd(int id_cfg, const QString& text, const QVariantList& keyValues)
{
    TData data = textParams(text.section(' ', 1));
    data[key::id_cfg] = id_cfg;
    data[key::status] = 1;
    data[key::cmd] = text.section(' ', 0, 0);
    for (int i = 0; i + 1 < keyValues.size(); i += 2)
        data.insert(keyValues.at(i).toString(), keyValues.at(i + 1));
    return project().addCmd(data, -1);
}

void RunBench::addLink(int id_cfg, const QString& alias, const QString& chip)
{
    addCmd(id_cfg, cmd::set_prog, {key::prog, alias, key::alt_enabled, false, key::alt_port, QString()});
    if (!chip.isEmpty()) {
        addCmd(id_cfg, cmd::set_device,
               {key::device, chip, key::file, TDeviceList::deviceFiles().value(chip), key::clk, 4000000});
    }
}

void RunBench::bind()
{
    project().bindAll();
    project().markMadeFor();
    project().normalizeAll();
    project().validateAll();
}

bool RunBench::run(const QList<int>& ids, int timeoutMs)
{
    for (int id : ids)
        m_control->start(id);
    return waitIdle(timeoutMs);
}

RecordingView& RunBench::view(int id_cfg)
{
    std::unique_ptr<RecordingView>& view = m_views[id_cfg];
    if (!view)
        view = std::make_unique<RecordingView>(id_cfg, &m_log, &m_hook);
    return *view;
}

QStringList RunBench::texts(TCodeExec code) const
{
    QStringList list;
    for (const LogEvent& event : m_log) {
        if (event.code == code)
            list.append(event.text1);
    }
    return list;
}
