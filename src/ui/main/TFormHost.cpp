#include "ui/main/TFormHost.h"

#include "base/TLang.h"
#include "ui/TActionWidget.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs/TDialogSelectDevice.h"
#include "ui/dialogs/TFormProgAutoDetectEdit.h"
#include "ui/window_helpers.h"

QString TFormHost::selectChip(const QString& current, QWidget* parent)
{
    return TDialogSelectDevice::selectChip(current, parent);
}

QString TFormHost::selectFamily(const QString& current, QWidget* parent)
{
    return TDialogSelectDevice::selectFamily(current, parent);
}

bool TFormHost::editRoute(TRoute& route, bool isNew, const TPairStringList& chips, QWidget* parent)
{
    TFormProgAutoDetectEdit dialog(langText(isNew ? Text::TitleRouteAdd : Text::TitleRouteEdit), route, chips,
                                   parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    route = dialog.route();
    return true;
}

bool TFormHost::ask(const QString& text, QWidget* parent)
{
    return msgAsk(text, parent);
}

QAction* TFormHost::action(const QString& text, const QString& hotKeyName, QWidget* widget)
{
    const int slash = hotKeyName.indexOf(QLatin1Char('/'));
    return new TActionWidget(text, hotKey(hotKeyName.left(slash), hotKeyName.mid(slash + 1)), widget);
}
