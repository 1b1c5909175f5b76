#pragma once

#include "base/types.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QVBoxLayout;
struct TBinding;

/// What is told of the chip or family that a command chooses: what the family has to set, a warning in red
/// where the description has one, remarks, and which pin goes where.
class TWgtDeviceView : public QWidget
{
    Q_OBJECT

public:
    /// The labels of the panes; rule: the length of the line between pins and comment.
    TWgtDeviceView(const QString& infoLabel, const QString& pinsLabel, int rule, QWidget* parent);

    /// Shows what is in force at the command; null empties the view.
    void showDevice(const TBinding& bound);

signals:
    /// From the family's part.
    void signalChangedCmdParam(TData param);

private:
    QPlainTextEdit* addPane(const QString& label);
    void showFamilyForm(const TBinding& bound);

    const int m_rule;
    QVBoxLayout* m_layout;
    QLabel* m_warning;
    QPlainTextEdit* m_info;
    QPlainTextEdit* m_pins;
    QPointer<QWidget> m_form;
};
