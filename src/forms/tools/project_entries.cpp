#include "forms/tools/project_entries.h"

#include "base/TCmdCode.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"

TIdBox::Entries cfgEntries()
{
    TIdBox::Entries entries;
    for (int i = 0, id = project().cfgIdAt(0); id >= 0; id = project().cfgIdAt(++i))
        entries.append({id, project().cfgName(id)});
    return entries;
}

TIdBox::Entries cmdEntries(int id_cfg)
{
    TIdBox::Entries entries;
    for (const TDataCmd* command : project().cmdsOfCfg(id_cfg))
        entries.append({command->id(), cmdCode().name(command->cmd())});
    return entries;
}
