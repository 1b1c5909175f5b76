#pragma once

#include "forms/IFormHost.h"
#include "forms/TFormCommand.h"
#include "link/lists/TPairStringList.h"

class QAction;
class QComboBox;
class QLineEdit;
class QPoint;
class QPushButton;
class QTableWidget;
class TWgtDeviceView;

/// Automatic detection: the family to look for, what follows, and the table of routes from a chip to a
/// configuration.
class TFormProgAutoDetect : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormProgAutoDetect(const TData& params);
    ~TFormProgAutoDetect() override;

public slots:
    void slotShowContextMenuRoute(QPoint pos);
    void slotAdd();
    void slotEdit();
    void slotDelete();
    void slotMoveUp();
    void slotMoveDown();
    void slotBtnSelectFamily();
    void slotChangeExecuteMode();
    void slotChangeExistMode();
    /// Offers what can be done with the selected route.
    void slotSelectItemRoute();

private:
    enum Action { Add, Edit, Delete, MoveUp, MoveDown, ActionCount };

    void showParams() override;
    QComboBox* modeBox(const QStringList& texts);
    QLayout* routeTable();
    void makeActions();
    void connectAll();

    void showRoutes();
    void showRoute(int row, const TRoute& route);
    TRoute routeAt(int row) const;
    /// Takes the table over as the command's route and reports it.
    void storeRoutes(int currentRow);
    void moveRoute(int delta);

    TPairStringList m_chips;
    QLineEdit* m_family = nullptr;
    QPushButton* m_select = nullptr;
    QComboBox* m_execute = nullptr;
    QComboBox* m_exist = nullptr;
    QTableWidget* m_routes = nullptr;
    QList<QAction*> m_actions;
    TWgtDeviceView* m_view = nullptr;
};
