#pragma once

#include "core/files/TJsonListFile.h"

#include <QByteArray>
#include <QList>

/// One item of the tree of projects.
struct TPrjListItem
{
    int parent = 0;      ///< number of the item above it, counted from 1 in list order; 0 at the top
    bool expand = false; ///< the items below it are shown
    QString name;
    QString file; ///< project file, relative to the folder of the list; empty for a mere group
    QJsonObject others = QJsonObject(); ///< what else the file says about it; kept and written back
};
bool operator==(const TPrjListItem& a, const TPrjListItem& b);

/// A project list, suffix "lst": the tree of projects, an item first, then the items below it. Main thread.
class TPrjListFile : public TJsonListFile
{
public:
    TPrjListFile();

    /// Reads the items of a list, parents before children: a parent that is not an earlier item becomes 0.
    [[nodiscard]] Result read(const QString& file);
    /// Writes the items, safely, unless the file holds them just so.
    [[nodiscard]] bool write(const QString& file);
    /// The bytes of the file: lines closed with a carriage return.
    QByteArray toBytes() const;

    QList<TPrjListItem> items() const;
    void setItems(const QList<TPrjListItem>& items);
    /// The list as another folder has it: relative names of projects lead to the same files from there.
    void changeFolder(const QString& from, const QString& to);

    /// Absolute path of a list: a relative one inside the folder of projects or, if there is none but one
    /// beside the executable, that one.
    static QString path(const QString& file);

private:
    QStringList entries() const;

    QList<TPrjListItem> m_items;
};

/// What happens to the file of a project that joins a list.
enum class TPrjFileMode {
    Add,    ///< it is there already
    Create, ///< it is made from the template, but an existing file stays as it is
    Paste   ///< it gets the given content; a file of that name must not exist
};

/// Gives a project file its suffix, makes it in the folder of the list as mode says, and leaves in file
/// the path to store: relative to that folder wherever there is such a path. An empty file is a mere
/// group and stays so. False with the reason in error when the file cannot be made.
[[nodiscard]] bool joinPrjList(const QString& folder, TPrjFileMode mode, const QByteArray& content,
                               QString& file, QString& error);
/// The suffixes of projects and of lists of them, without the dot.
constexpr QLatin1String prjSuffix("prj", 3);
constexpr QLatin1String prjListSuffix("lst", 3);
/// Copies a list to a file that is not there yet. The projects of a list are named from its folder: in
/// another folder the relative names change, so that they lead to the same files. False when it cannot be
/// done.
[[nodiscard]] bool copyPrjList(const QString& from, const QString& to);
/// file with "." and suffix behind it, if it does not end so already.
QString withSuffix(const QString& file, const QString& suffix);
