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

    /// Adds the command and shows its form as a window.
    void open(const QString& word, const TData& params);
    template <typename T> T* part(int i = 0) const { return m_form->findChildren<T*>().value(i); }
    QWidget* form() const { return m_form.get(); }
    /// What was reported since the last call, but for id_cmd, each as "key=value key=value" in the order
    /// of the keys.
    QStringList reports();
    /// The same for what is stored.
    QString stored(const QStringList& keys) const;

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
