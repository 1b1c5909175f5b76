#pragma once

#include <QWidget>

class QCheckBox;
class QSplitter;
class TCmdGroup;

/// A free-standing window with a button for each command that can be added: flow and tools, programmer,
/// and the chip in force at the current command. Holds ids only, so it may outlive the project.
class TDialogCmdSelector : public QWidget
{
    Q_OBJECT

public:
    TDialogCmdSelector(int id_cfg, int id_cmd);
    ~TDialogCmdSelector() override;

signals:
    /// Add the command; state is its check mark.
    void signalAddCmd(QString cmd_code, bool state);

public slots:
    /// The current command has changed; -1, -1 when the project closes.
    void slotSelectCmd(int id_cfg, int id_cmd);
    void slotAddCmd(const QString& cmd_code);
    void slotClose();

private:
    void place();

    TCmdGroup* m_device;
    QSplitter* m_splitter;
    QCheckBox* m_state;
};
