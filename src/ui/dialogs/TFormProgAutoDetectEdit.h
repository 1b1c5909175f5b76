#pragma once

#include "base/texts.h"
#include "forms/IFormHost.h"
#include "ui/TDialogBase.h"

class QFormLayout;
class QPushButton;
class TComboBox;

/// Edits one route of automatic detection: a chip and the configuration for it.
class TFormProgAutoDetectEdit : public TDialogBase
{
    Q_OBJECT

public:
    /// chips: identification to name. A chip or a configuration of the route that is not known shows no
    /// selection and stays until another is chosen.
    TFormProgAutoDetectEdit(const QString& title, const TRoute& route, const TPairStringList& chips,
                            QWidget* parent = nullptr);

    TRoute route() const { return m_route; }

private:
    TComboBox* addBox(QFormLayout* layout, Text label, QString& target);
    void fillChips(TComboBox* box, const TPairStringList& chips);
    void fillCfgs(TComboBox* box);
    void updateAccept();

    TRoute m_route;
    QPushButton* m_accept = nullptr;
};
