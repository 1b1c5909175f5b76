#include "forms/edits/TPortBox.h"

#include "link/wire/TSerialPort.h"

#include <QLineEdit>
#include <QSignalBlocker>

TPortBox::TPortBox(QWidget* parent)
    : TSteadyBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setCompleter(nullptr); // would change the case of a name to that of another
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &TPortBox::take);
    connect(lineEdit(), &QLineEdit::editingFinished, this, &TPortBox::take);
}

void TPortBox::setPort(const QString& port)
{
    const bool isTyping = lineEdit()->hasFocus() && currentText() != m_port;
    m_port = port;
    if (isTyping)
        return;
    const QSignalBlocker blocker(this);
    setCurrentIndex(findText(port, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(port);
}

void TPortBox::showPopup()
{
    fill();
    QComboBox::showPopup();
}

// Not before somebody comes: asking the system for its ports takes longer than all else of a form, and the
// forms of all tabs are made when a project opens.
void TPortBox::focusInEvent(QFocusEvent* event)
{
    if (count() == 0)
        fill();
    QComboBox::focusInEvent(event);
}

void TPortBox::fill()
{
    const QSignalBlocker blocker(this);
    const QString text = currentText();
    clear();
    for (const QString& described : TSerialPort::portList()) {
        addItem(TSerialPort::portNameOf(described));
        setItemData(count() - 1, described, Qt::ToolTipRole);
    }
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(text);
}

void TPortBox::take()
{
    if (currentText() == m_port)
        return;
    m_port = currentText();
    emit signalChanged(m_port);
}
