#pragma once

#include "base/types.h"
#include "forms/edits/TWgtEditBase.h"

#include <QFrame>
#include <QStringList>

class QFormLayout;

/// Base of the forms of the programmer's and the tools' commands. It keeps the parameters as they are
/// stored, so that a value which the form cannot show is reported unchanged until the user chooses
/// another. A form reports every change at once and stores nothing in the project.
class TFormCommand : public QFrame
{
    Q_OBJECT

public:
    ~TFormCommand() override;

    int idCmd() const { return m_idCmd; }
    /// Shows parameters that were stored by somebody else; reports nothing. What the user is typing
    /// stays. False, and nothing done, for the data of another command.
    bool updateParams(const TData& params);

    /// What the form knows beyond the parameters, for the next form of the same command in the same project;
    /// invalid for nothing. The body given here knows nothing.
    virtual QVariant kept() const;
    /// Takes back what an earlier form of the command kept. The body given here does nothing.
    virtual void takeKept(const QVariant& kept);

signals:
    /// The user has changed a parameter: id_cmd and all parameters of the form.
    void signalChangedCmdParam(TData param);

protected:
    /// Takes id_cmd and the parameters with these keys out of params.
    TFormCommand(const TData& params, const QStringList& keys);

    /// Brings the parameters to the widgets, with their signals blocked.
    virtual void showParams() = 0;

    QVariant param(const QString& key) const { return m_params.value(key); }
    QString textParam(const QString& key) const { return param(key).toString(); }
    /// The nearest number that an int holds.
    int intParam(const QString& key) const;
    void setParam(const QString& key, const QVariant& value) { m_params[key] = value; }
    void report();

    /// Shows the number stored under key in a field unless the user is typing in it.
    template <typename Field> void showStored(Field* field, const QString& key) const
    {
        if (!isEdited(field))
            field->setStored(textParam(key));
    }

private:
    static bool isEdited(const QWidget* field);

    int m_idCmd;
    QStringList m_keys;
    TData m_params;
};

/// The layout that the rows of a form stand in.
QFormLayout* formRows(QWidget* form);
/// A text across the whole form, broken into lines.
QWidget* formHint(const QString& text, QWidget* parent);
