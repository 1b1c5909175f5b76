#pragma once

#include "forms/IFormHost.h"

/// Gives the forms the dialogs of the program.
class TFormHost : public IFormHost
{
public:
    QString selectChip(const QString& current, QWidget* parent) override;
    QString selectFamily(const QString& current, QWidget* parent) override;
    bool editRoute(TRoute& route, bool isNew, const TPairStringList& chips, QWidget* parent) override;
    bool ask(const QString& text, QWidget* parent) override;
    QAction* action(const QString& text, const QString& hotKeyName, QWidget* widget) override;
};
