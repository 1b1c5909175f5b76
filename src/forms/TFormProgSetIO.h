#pragma once

#include "forms/TFormCommand.h"

#include <QFont>
#include <QVector>

class QVBoxLayout;
class TComboBox;

/// The states of the programmer's pins.
class TFormProgSetIO : public TFormCommand
{
    Q_OBJECT

public:
    /// pins: names in the order of the state's letters. letters and texts: the states on offer; a text
    /// begins with its letter. font: of fixed width, for boxes and buttons.
    TFormProgSetIO(const TData& params, const QStringList& pins, const QString& letters,
                   const QStringList& texts, const QFont& font);

public slots:
    void slotChanged();
    void slotSetStateAll();

private:
    void showParams() override;
    QWidget* pinRows(const QStringList& pins, const QStringList& texts, const QFont& font);
    QVBoxLayout* letterButtons(const QFont& font);
    void showLetter(TComboBox* box, QChar letter);

    QString m_letters;
    QVector<TComboBox*> m_boxes;
};
