#pragma once

#include "ui/setup/setup_editors.h"

#include <QWidget>

#include <vector>

class QGroupBox;
class QScrollArea;

/// A page of the setup dialog. Shows the settings as they are when it is made, and stores on demand what
/// the user has changed.
class IDialogSetupPage : public QWidget
{
    Q_OBJECT

public:
    IDialogSetupPage(Text titleText, QWidget* parent);
    ~IDialogSetupPage() override;

    QString title() const;
    /// Titles of the groups, for the tree; none on a page that is not made of groups.
    QStringList groups() const;
    /// Scrolls to a group.
    void showGroup(int index);
    /// Writes changed values into TAppData.
    virtual void store();

protected:
    /// Makes the page of groups of settings, one below the other, scrolled where they are many.
    void addGroups(const std::vector<TSetupGroup>& groups);
    /// The editor of a setting on this page; null when it has none.
    QWidget* editor(const TSetupField& field) const;

private:
    QGroupBox* makeGroup(const TSetupGroup& group);

    struct TEntry
    {
        TSetupField field;
        TSetupEditor editor;
    };
    const Text m_titleText;
    QScrollArea* m_scroll = nullptr;
    QList<QGroupBox*> m_groups;
    std::vector<TEntry> m_entries;
};
