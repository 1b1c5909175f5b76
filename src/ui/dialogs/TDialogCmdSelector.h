#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>

class QCheckBox;
class QScreen;
class QSplitter;
class TCmdGroup;

/// A free-standing window with a button for each command that can be added: flow and tools, programmer,
/// and the chip in force at the current command. Holds ids only, so it may outlive the project.
class TDialogCmdSelector : public QWidget
{
    Q_OBJECT

public:
    /// start is the button that the window never places itself on, in the window that it stands beside:
    /// without one the active window. It may go away.
    TDialogCmdSelector(int id_cfg, int id_cmd, const QWidget* start = nullptr);
    ~TDialogCmdSelector() override;

    /// Whether commands can be added now; the buttons are greyed when not.
    void setAdding(bool can);

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
    void placeAnew();
    bool standsBeside() const;
    void settleBeside(const QSize& size);
    void settle(const QRect& wanted, const QScreen& on);

    const QPointer<const QWidget> m_start;
    const QPointer<const QWidget> m_beside;
    bool m_isPlaced = false;
    QPoint m_placedAt; ///< the corner that it gave itself last
    TCmdGroup* m_device;
    QSplitter* m_splitter;
    QCheckBox* m_state;
};
