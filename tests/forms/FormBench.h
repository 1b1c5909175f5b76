#pragma once

#include "forms/TFormFactory.h"
#include "forms/edits/TWgtEditBase.h"
#include "support/BenchProject.h"
#include "support/tables.h"

#include <QComboBox>
#include <QLineEdit>

#include <memory>

template <typename T> QList<T*> allOf(const QWidget& form)
{
    return form.findChildren<T*>();
}

/// A project whose commands are edited in their forms, as the page of the window does it: what a form
/// reports is kept and stored.
class FormBench : public QObject, public BenchProject
{
    Q_OBJECT

public:
    FormBench();
    ~FormBench() override;

    /// Puts a programmer and a chip of the shipped list before the next command.
    void addShippedChip(const QString& chip);
    /// Adds the command, written as for add(), and shows its form as a window. Nothing is reported or changed
    /// by that.
    void open(const QString& command);
    /// One thing that a user does, by the kind and the place of what it is done with: "type 0 keys" as
    /// enter() in an edit; "choose 0 text" in a box, by keys; "check 0" and "press 0", a check box and a
    /// button, by mouse. A button's text has got a "&", as some styles put it there.
    void act(const QString& step);
    virtual QWidget* form() const { return m_form.get(); }
    /// Of the parts that are to be seen: one that has been replaced may still be there.
    template <typename T> T* part(int i = 0) const
    {
        for (T* one : allOf<T>(*form())) {
            if (one->isVisible() && i-- == 0)
                return one;
        }
        return nullptr;
    }
    template <typename T = TWgtEditBase> QLineEdit* line(int i = 0) const { return part<T>(i)->lineEdit(); }
    /// What was reported since the last call, but for id_cmd, each as "key=value key=value" in the order
    /// of the keys.
    QStringList reports() { return std::exchange(m_reports, {}); }
    /// The text of the command's row.
    QString rowText() const;
    /// Closes the form, saves the project and opens it again; the command is the last of the first
    /// configuration.
    void reopen();

    int idCmd = -1;

public slots:
    void store(TData params);

private:
    TFormFactory m_factory;
    std::unique_ptr<QWidget> m_form;
    QStringList m_reports;
};

QLineEdit* line(const QWidget& form, int i = 0);
/// Only in an active window can a line have the focus, and lose it.
void showActive(QWidget& window);
/// Clicks where check boxes have their box.
void click(QWidget* field);
/// Types over what stands in the line and stays in it. A "^" or "v" is the key Up or Down, ">" goes to the
/// end, "!" is Return.
void type(QLineEdit* line, const QString& keys);
/// Types and leaves the line.
void enter(QLineEdit* line, const QString& keys);
/// Chooses an entry by keys; it must be there.
void choose(QComboBox* box, const QString& text);
