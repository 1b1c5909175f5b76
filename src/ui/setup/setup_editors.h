#pragma once

#include "base/texts.h"
#include "settings/TAppData.h"

#include <QLatin1String>

#include <functional>
#include <variant>
#include <vector>

class QWidget;

// The rows of the setup pages: which setting, its text, how it is edited. Main thread.

/// The field of a setting.
using TSetupField = std::variant<bool TAppData::*, int TAppData::*, QString TAppData::*, QColor TAppData::*>;

/// How a setting is edited.
enum class TSetupKind {
    Check,    ///< a check mark: a bool, or a number that is read as one
    Number,   ///< a count of pixels
    Expand,   ///< what the tree of projects shows at the start
    Style,    ///< one of the styles that there are
    Language, ///< one of the language files
    File,     ///< a path, to be browsed for
    Folder,   ///< the same for a folder
    Color     ///< a colour, with a check mark if there is an enabling field
};

/// One setting.
struct TSetupRow
{
    TSetupKind kind = TSetupKind::Check;
    Text text = Text::None; ///< none: the name of the command below
    TSetupField field = static_cast<bool TAppData::*>(nullptr);
    bool TAppData::*enable = nullptr;
    QLatin1String command = QLatin1String();
};

/// Settings that belong together.
struct TSetupGroup
{
    Text title = Text::None; ///< also that of a menu
    std::vector<TSetupRow> rows;
};

/// The widget of a setting, and what writes its value back if the user has changed it.
struct TSetupEditor
{
    QWidget* widget = nullptr;
    bool hasLabel = false; ///< the text stands before the widget and not in it
    std::function<void()> store;
};

/// Shows the value that the setting has now. The widget belongs to parent.
TSetupEditor makeSetupEditor(const TSetupRow& row, QWidget* parent);
QString setupText(const TSetupRow& row);
