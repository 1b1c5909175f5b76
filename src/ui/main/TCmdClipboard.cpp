#include "ui/main/TCmdClipboard.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/json_file.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"

namespace {

TData inCfg(TData command, int id_cfg)
{
    command.insert(key::id_cfg, id_cfg);
    return command;
}

} // namespace

bool TCmdClipboard::copyCmd(int id_cmd)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!command)
        return false;
    m_cmds = {command->toData()};
    m_cmdTitle = cmdCode().name(command->cmd());
    return true;
}

void TCmdClipboard::copyChecked(int id_cfg)
{
    m_cmds.clear();
    for (const TDataCmd* command : project().cmdsOfCfg(id_cfg)) {
        if (command->status())
            m_cmds.append(command->toData());
    }
    m_cmdTitle = isOneCmd() ? cmdCode().name(m_cmds.first().value(key::cmd).toString())
                            : langText(Text::PasteSelected);
}

void TCmdClipboard::pasteCmds(int id_cfg, int id_cmd) const
{
    int index = id_cmd < 0 ? 0 : project().indexCmd(id_cmd) + 1;
    for (const TData& command : m_cmds)
        index = project().indexCmd(project().addCmd(inCfg(command, id_cfg), index)) + 1;
    project().bindAll();
}

void TCmdClipboard::copyCfg(int id_cfg)
{
    m_cfgName = project().cfgName(id_cfg);
    m_cfgDescription = project().cfgDescription(id_cfg);
    m_cfgCmds.clear();
    for (const TDataCmd* command : project().cmdsOfCfg(id_cfg))
        m_cfgCmds.append(command->toData());
}

int TCmdClipboard::pasteCfg(const QString& name, int index) const
{
    const int id_cfg = project().addCfg(name, m_cfgDescription, index);
    for (const TData& command : m_cfgCmds)
        project().addCmd(inCfg(command, id_cfg), -1);
    project().bindAll();
    return id_cfg;
}

bool TCmdClipboard::copyPrj(const QString& name, const QString& path, QString& error)
{
    // Whole or not at all: a copy that was cut in the reading would be pasted as a project.
    QByteArray content;
    if (!readWholeFile(path, content, error))
        return false;
    m_prjName = name;
    m_prjContent = content;
    return true;
}

void TCmdClipboard::dropReferences()
{
    for (QList<TData>* copied : {&m_cmds, &m_cfgCmds}) {
        for (TData& command : *copied)
            ::dropReferences(command);
    }
}
