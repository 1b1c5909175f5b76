#pragma once

#include <QWidget>

class QLineEdit;
class QValidator;

/// A line with a validator as every edit of the forms has one: leaving it takes over what was typed, Up
/// and Down step, "*" gives the default, a value that does not fit is marked.
class TWgtEditBase : public QWidget
{
    Q_OBJECT

public:
    ~TWgtEditBase() override;

    /// Keeps the edits of a form that is going away from telling what stands in them: a line that loses the
    /// focus takes its text over. Call it in the destructor of what listens to them.
    static void silence(QWidget& form);

    QLineEdit* lineEdit() const { return m_edit; }
    /// The user is typing and has not left the line yet.
    bool isEditing() const;
    /// Tool tip of the line: what may be entered.
    void setRangeText(const QString& text);
    /// Marks the line as faulty or as good.
    void setFault(bool fault);
    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    /// Takes over what was typed. Nothing happens when that is what is shown.
    void editingFinished();
    /// Enters the default as the user would.
    void setDefault();

protected:
    /// Takes the validator over.
    TWgtEditBase(QValidator* validator, QWidget* parent);

    /// Shows a text that the user has not typed.
    void display(const QString& text);
    /// The text that stands for the value, whatever the user is typing.
    const QString& shown() const { return m_shown; }
    /// The user has typed text.
    virtual void commit(const QString& text) = 0;
    /// The user steps up (1) or down (-1) from text.
    virtual void step(const QString& text, int delta) = 0;
    virtual void takeDefault() = 0;

private:
    bool handleKey(int key);
    void dropUnacceptable();

    QLineEdit* m_edit;
    QString m_shown;
};
