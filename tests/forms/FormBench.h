#pragma once

#include "forms/IFormHost.h"
#include "forms/TFormFactory.h"
#include "link/TPairStringList.h"
#include "support/BenchProject.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

class QComboBox;
class QLineEdit;

/// A project whose commands are edited in their forms, as the page of the window does it: what a form
/// reports is kept and stored. It answers the dialogs that a form opens.
class FormBench : public QObject, public BenchProject, private IFormHost
{
    Q_OBJECT

public:
    FormBench();
    ~FormBench() override;

    /// Puts a programmer and a chip of the shipped list before the next command.
    void addShippedChip(const QString& chip);
    /// Adds the command and shows its form as a window. Nothing is reported or changed by that.
    void open(const QString& word, const TData& params);
    /// The same from "word key=value key=value"; "~" stands for a blank.
    void open(const QString& command);
    /// One thing that a user does, by the kind and the place of what it is done with:
    /// "type 0 text" over what stands in an edit; "leave 0", look into it and go; "keys 0 Up Down *"; "choose
    /// 0 text" in a box, by keys; "check 0" and "press 0", a check box and a button, by mouse. A button's text
    /// has got a "&", as some styles put it there.
    void act(const QString& step);
    template <typename T> T* part(int i = 0) const { return m_form->findChildren<T*>().value(i); }
    QWidget* form() const { return m_form.get(); }
    /// What was reported since the last call, but for id_cmd, each as "key=value key=value" in the order
    /// of the keys.
    QStringList reports();
    /// The same for what is stored.
    QString stored(const QStringList& keys) const;
    /// The text of the command's row.
    QString rowText() const;
    /// Closes the form, saves the project and opens it again; the command is the last of the first
    /// configuration.
    void reopen();

    int idCmd = -1;
    QString chosen;         ///< answer to the choice of a chip or family
    TRoute route;           ///< answer to an edited route
    bool agree = true;      ///< answer to questions and routes
    bool closeForm = false; ///< the form goes away while a dialog is open
    TRoute offered;         ///< what the last route was before

public slots:
    void store(TData params);

private:
    QString selectChip(const QString&, QWidget*) override { return answer(chosen); }
    QString selectFamily(const QString&, QWidget*) override { return answer(chosen); }
    bool editRoute(TRoute& edited, bool, const TPairStringList&, QWidget*) override;
    bool ask(const QString&, QWidget*) override { return answer(agree); }
    QAction* action(const QString& text, const QString&, QWidget* widget) override;
    template <typename T> T answer(const T& value)
    {
        if (closeForm)
            m_form.reset();
        return value;
    }

    TFormFactory m_factory;
    std::unique_ptr<QWidget> m_form;
    QStringList m_reports;
};

/// Types text over what stands in the line and leaves it.
void type(QLineEdit* line, const QString& text);
/// Chooses an entry by keys; it must be there.
void choose(QComboBox* box, const QString& text);
