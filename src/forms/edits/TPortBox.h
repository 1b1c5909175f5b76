#pragma once

#include "forms/edits/TSteadyBox.h"

/// A serial port: one that the system has, or any name that is typed. The list is that of the moment at
/// which it is opened.
class TPortBox : public TSteadyBox
{
    Q_OBJECT

public:
    explicit TPortBox(QWidget* parent = nullptr);

    QString port() const { return m_port; }
    /// Shows the name unless the user is typing; reports nothing.
    void setPort(const QString& port);
    void showPopup() override;

signals:
    /// The user has chosen a port, or left the line with another name in it.
    void signalChanged(QString port);

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void fill();
    void take();

    QString m_port;
};
