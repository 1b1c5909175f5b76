#include "core/files/TCtrlProject.h"

#include "base/TCmdCode.h"
#include "base/helpers.h"
#include "base/json_file.h"
#include "base/keys.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

const QLatin1String defaultCfgName("Config");

/// Numbers and flags of a file edited by hand come as the text that they are written with.
QString textOf(const QJsonValue& value)
{
    return value.toVariant().toString();
}

void addCommand(const QJsonObject& object, int id_cfg, TDataPrj& project)
{
    TData data;
    for (auto it = object.begin(); it != object.end(); ++it)
        data.insert(it.key(), textOf(it.value()));
    data.insert(key::id_cfg, id_cfg);
    project.addCmd(data, -1);
}

void fill(const QJsonObject& top, TDataPrj& project)
{
    const QJsonArray configurations = top.value(key::configurations).toArray();
    for (const QJsonValue& value : configurations) {
        const QJsonObject object = value.toObject();
        const int id_cfg =
            project.addCfg(textOf(object.value(key::name)), textOf(object.value(key::description)), -1);
        const QJsonArray commands = object.value(key::commands).toArray();
        for (const QJsonValue& command : commands)
            addCommand(command.toObject(), id_cfg, project);
    }
}

/// The parameter file names a data file, which is looked for from the folder of the project.
bool hasDataFile(const QString& word)
{
    return word == cmd::calc_crc || (!TCmdCode::isTools(word) && !TCmdCode::isProg(word));
}

/// The text of a project file, made under the lock of the project.
class Writer
{
public:
    /// folder is where the file is to lie.
    Writer(const TDataPrj& project, const QString& folder)
        : m_oldFolder(project.workPath())
        , m_folder(folder)
        , m_cfgs(project.cfgList())
    {
        for (int i = 0; i < m_cfgs.size(); ++i)
            m_cfgPosition.insert(m_cfgs.at(i)->id(), i);
        const QList<TDataCmd*> commands = project.cmdList();
        for (const TDataCmd* command : commands)
            m_cmdsOfCfg[command->cfgId()].append(command);
        int position = 0;
        for (const TDataCfg* cfg : m_cfgs) {
            for (const TDataCmd* command : m_cmdsOfCfg.value(cfg->id()))
                m_cmdPosition.insert(command->id(), position++);
        }
    }

    QByteArray bytes()
    {
        m_text = QStringLiteral("{\n    \"version\": 1,\n    \"configurations\":\n    [\n");
        for (const TDataCfg* cfg : m_cfgs) {
            if (cfg != m_cfgs.first())
                m_text += QLatin1String(",\n");
            addCfg(*cfg);
        }
        m_text += QLatin1String("\n    ]\n}\n");
        return m_text.toUtf8();
    }

private:
    void addCfg(const TDataCfg& cfg)
    {
        m_text += QLatin1String("        {\n");
        m_text += QStringLiteral("            %1,\n").arg(jsonPair(key::name, cfg.name()));
        m_text += QStringLiteral("            %1,\n")
                      .arg(jsonPair(key::description, encodeText(cfg.description())));
        m_text += QLatin1String("            \"commands\":\n            [\n");
        const QList<const TDataCmd*> commands = m_cmdsOfCfg.value(cfg.id());
        for (const TDataCmd* command : commands) {
            if (command != commands.first())
                m_text += QLatin1String(",\n");
            addCmd(command->toData());
        }
        m_text += QLatin1String("\n            ]\n        }");
    }

    void addCmd(TData data)
    {
        const QString word = data.value(key::cmd).toString();
        const QString status =
            data.value(key::status).toInt() != 0 ? QStringLiteral("1") : QStringLiteral("0");
        TDataCmd::removeReserved(data);
        moveDataFile(word, data);
        m_text += QStringLiteral("                {%1, %2")
                      .arg(jsonPair(key::status, status), jsonPair(key::cmd, word));
        // Sorted, so that a file changes only where the project has changed.
        QStringList keys = data.keys();
        std::sort(keys.begin(), keys.end());
        const auto cfg = [this](int id) { return m_cfgPosition.value(id, -1); };
        const auto command = [this](int id) { return m_cmdPosition.value(id, -1); };
        for (const QString& key : qAsConst(keys))
            m_text += QLatin1String(", ") +
                      jsonPair(key, mappedReference(word, key, data.value(key), cfg, command));
        m_text += QLatin1Char('}');
    }

    void moveDataFile(const QString& word, TData& data) const
    {
        const QString path = data.value(key::file).toString();
        if (m_folder != m_oldFolder && hasDataFile(word) && !path.isEmpty() && !QFileInfo(path).isAbsolute())
            data.insert(key::file, relToDir(m_folder, absFile(m_oldFolder, path)));
    }

    QString m_text;
    const QString m_oldFolder;
    const QString m_folder;
    QList<TDataCfg*> m_cfgs;
    QHash<int, QList<const TDataCmd*>> m_cmdsOfCfg;
    QHash<int, int> m_cfgPosition;
    QHash<int, int> m_cmdPosition;
};

} // namespace

TCtrlProject::TCtrlProject() = default;

TCtrlProject::~TCtrlProject() = default;

int TCtrlProject::load(const QString& file, TDataPrj& project)
{
    m_errorText.clear();
    // Positions in the file are the ids only when the counters start again.
    project.reset();
    QByteArray bytes;
    if (!readWholeFile(file, bytes, m_errorText))
        return 1;
    QJsonObject top;
    if (!bytes.isEmpty() && !parseJsonObject(bytes, top, m_errorText))
        return 2;
    if (bytes.isEmpty())
        project.addCfg(defaultCfgName, QString(), -1);
    else
        fill(top, project);
    const QFileInfo info(file);
    project.fromData({{key::prj_file, info.absoluteFilePath()}, {key::work_path, info.absolutePath()}});
    TFileStamp stamp;
    stamp.take(file, bytes);
    project.setStored(project.revision(), stamp);
    return 0;
}

int TCtrlProject::open(const QString& file, TDataPrj& project)
{
    const int result = load(file, project);
    if (result == 0) {
        project.bindAll();
        project.markMadeFor();
        project.normalizeAll();
        project.validateAll();
    }
    project.clearChanged();
    return result;
}

bool TCtrlProject::save(const QString& file, TDataPrj& project)
{
    m_errorText.clear();
    quint64 revision = 0;
    QByteArray bytes;
    // A run goes on changing the project while it is written.
    project.locked([&] {
        revision = project.revision();
        bytes = Writer(project, project.workPath()).bytes();
    });
    if (!writeFileSafely(file, bytes, m_errorText))
        return false;
    if (isSameFile(file, project.file())) {
        TFileStamp stamp;
        stamp.take(file, bytes);
        project.setStored(revision, stamp);
    }
    return true;
}

bool TCtrlProject::saveCopy(const QString& file, const TDataPrj& project)
{
    m_errorText.clear();
    QByteArray bytes;
    project.locked([&] { bytes = Writer(project, absDir(file)).bytes(); });
    return writeFileSafely(file, bytes, m_errorText);
}

QString TCtrlProject::errorText() const
{
    return m_errorText;
}

bool writeEmptyList(const QString& file)
{
    QString error;
    return writeFileSafely(file, "{\n    \"version\": 1,\n    \"list\":\n    [\n    ]\n}\n", error);
}

QByteArray newProjectBytes()
{
    return "{\n"
           "    \"version\": 1,\n"
           "    \"name\": \"\",\n"
           "    \"description\": \"\",\n"
           "    \"configurations\":\n"
           "    [\n"
           "        {\n"
           "            \"name\": \"Config\",\n"
           "            \"description\": \"\",\n"
           "            \"commands\":\n"
           "            [\n"
           "            ]\n"
           "        }\n"
           "    ]\n"
           "}\n";
}

bool writeNewProject(const QString& file)
{
    QString error;
    return writeFileSafely(file, newProjectBytes(), error);
}

bool writeBytes(const QString& file, const QByteArray& bytes)
{
    QString error;
    return !bytes.isEmpty() && writeFileSafely(file, bytes, error);
}
