#pragma once

#include "base/texts.h"
#include "ui/TDialogBase.h"

#include <QStringList>

class QLineEdit;

/// What a dialog of a name and a file shows and takes.
struct TNameFile
{
    QString title;
    QString name;
    QString file;
    Text nameLabel = Text::None;
    Text fileLabel = Text::None;
    QString folder;                    ///< a file that is picked comes back relative to it
    QString pattern;                   ///< of the files that can be picked
    QString browseTitle;               ///< of the file dialog
    bool mustExist = true;             ///< only a file that is there can be picked
    bool needsFile = true;             ///< not accepted without a file
    QStringList taken = QStringList(); ///< names that are not accepted; neither is an empty one
};

/// Edits a name and the file that belongs to it.
class TDialogNameFile : public TDialogBase
{
    Q_OBJECT

public:
    QString name() const;
    QString file() const;

protected:
    TDialogNameFile(const TWindowKeys& keys, const TNameFile& rows, QWidget* parent);

    /// Where the file dialog starts for a file of the line.
    virtual QString pathOf(const QString& file) const;

private:
    void browse();
    void take(const QString& picked);
    bool isComplete() const;

    const TNameFile m_rows;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_file = nullptr;
};
