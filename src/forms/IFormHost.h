#pragma once

#include <QString>

class QAction;
class QWidget;
class TPairStringList;

/// One route of automatic detection.
struct TRoute
{
    QString chip; ///< identification of the chip
    QString cfg;  ///< id of a configuration, decimal
};

/// What the forms need of the windows above them: boxes and dialogs, each of which returns when it is
/// closed. The form that asked may be gone by then, so parent is the form's window. Main thread.
class IFormHost
{
public:
    virtual ~IFormHost() = default;

    /// Name of a chip of the device list; empty when refused.
    virtual QString selectChip(const QString& current, QWidget* parent) = 0;
    /// Name of a detection; empty when refused.
    virtual QString selectFamily(const QString& current, QWidget* parent) = 0;
    /// Lets the user fill in a new route, or change one. chips: identification to name. False when
    /// refused; what was not chosen anew stays as it is.
    virtual bool editRoute(TRoute& route, bool isNew, const TPairStringList& chips, QWidget* parent) = 0;
    /// True for Yes.
    virtual bool ask(const QString& text, QWidget* parent) = 0;
    /// An action of the widget, with the keys that the hot-key file has under this name, as
    /// "Group/Name"; they count while the widget has the focus.
    virtual QAction* action(const QString& text, const QString& hotKey, QWidget* widget) = 0;
};

/// The registered host, or null: then the buttons that need one do nothing.
IFormHost* formHost();
/// Registers the host, borrowed.
void setFormHost(IFormHost* host);
