#pragma once

#include "forms/edits/TComboBox.h"

#include <QList>
#include <QPair>

#include <functional>

/// A choice among things of the project that are known by their ids. The project may change while the
/// form is open: the entries are renewed before the user can choose one.
class TIdBox : public TComboBox
{
    Q_OBJECT

public:
    /// Id and name.
    using Entries = QList<QPair<int, QString>>;

    TIdBox(const std::function<Entries()>& source, QWidget* parent);

    /// Fills the box and shows the entry with that id, or none; reports nothing.
    void showId(int id);
    /// -1 without a current entry.
    int id() const;

protected:
    bool event(QEvent* event) override;

private:
    void fill(const Entries& entries, int id);

    const std::function<Entries()> m_source;
    Entries m_entries;
};
