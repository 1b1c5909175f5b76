#pragma once

#include "base/types.h"

#include <QByteArray>
#include <QList>

/// What was copied in the window: commands, a configuration, a project. It is not the system's clipboard, and
/// goes with the window. Main thread.
class TCmdClipboard
{
public:
    /// Copies one command of the open project; false when there is none with that id.
    bool copyCmd(int id_cmd);
    /// Copies the checked commands of a configuration, of which there may be none.
    void copyChecked(int id_cfg);
    bool hasCmds() const { return !m_cmds.isEmpty(); }
    bool isOneCmd() const { return m_cmds.size() == 1; }
    /// Display name of the command that is copied, or what stands for several; null before the first copy.
    QString cmdTitle() const { return m_cmdTitle; }
    /// Adds the commands to a configuration of the open project, behind one of its commands, or with -1
    /// before all others of the project.
    void pasteCmds(int id_cfg, int id_cmd) const;

    void copyCfg(int id_cfg);
    /// Empty as long as no configuration has been copied.
    QString cfgName() const { return m_cfgName; }
    /// Adds the configuration to the open project, at an index and under a name; its id.
    int pasteCfg(const QString& name, int index) const;

    /// Copies a project with its file as it is on the disk. False with the reason when it cannot be read;
    /// then what was copied before stays.
    [[nodiscard]] bool copyPrj(const QString& name, const QString& path, QString& error);
    /// Empty as long as no project has been copied.
    QString prjName() const { return m_prjName; }
    QByteArray prjContent() const { return m_prjContent; }

    /// Another project has been opened: ids of commands and configurations, to which copied commands refer,
    /// mean something within one opening only.
    void dropReferences();

private:
    QList<TData> m_cmds;
    QString m_cmdTitle;
    QList<TData> m_cfgCmds;
    QString m_cfgName;
    QString m_cfgDescription;
    QString m_prjName;
    QByteArray m_prjContent;
};
