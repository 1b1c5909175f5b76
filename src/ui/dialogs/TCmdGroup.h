#pragma once

#include <QStringList>
#include <QWidget>

class IDevice;
class QScrollArea;

/// A titled column of command buttons.
class TCmdGroup : public QWidget
{
    Q_OBJECT

public:
    explicit TCmdGroup(const QString& title, QWidget* parent = nullptr);

    /// Makes a button for each command of the device, which is needed only during the call; null empties
    /// the column. Buttons that would come out the same stay; true when there are others now.
    bool setDevice(const IDevice* device);

signals:
    void signalAddCmd(QString cmd_code);

public slots:
    /// The sender is a button of the column.
    void slotAddCmd();

private:
    void build(const QStringList& keys, const QStringList& titles);

    QStringList m_keys;
    QStringList m_titles;
    QScrollArea* m_scroll;
};
