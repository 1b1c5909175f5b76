#pragma once

#include <QVector>
#include <QWidget>

class QGridLayout;
class TComboBox;

/// The states of a programmer's pins: a choice for each pin, and for each state a button that gives it to
/// all of them. A pin whose letter is none of the states shows no choice.
class TPinStates : public QWidget
{
    Q_OBJECT

public:
    /// Where the buttons stand: in rows under the pins, or in a column beside them, past which the pins
    /// scroll.
    enum Buttons { Below, Beside };

    /// pins: a label for each letter of the state. texts: the states on offer, each beginning with its
    /// letter.
    TPinStates(const QStringList& pins, const QStringList& texts, const QFont& font, Buttons place);

    /// A letter for each pin, the letters that were set for pins that the user left alone.
    QString state() const { return m_state; }
    /// Shows the state, cut or filled up to the pins; reports nothing.
    void setState(const QString& state);

signals:
    /// The user has chosen for one pin or for all.
    void signalChanged();

private slots:
    void slotChangedState();
    void slotSetStateAll();

private:
    QWidget* pinRows(const QStringList& pins, const QFont& font);
    static QWidget* scrolled(QWidget* rows);
    QGridLayout* buttons(const QFont& font, Buttons place);

    const QStringList m_texts;
    QString m_state;
    QVector<TComboBox*> m_boxes;
};
