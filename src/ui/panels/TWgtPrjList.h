#pragma once

#include "core/files/TPrjListFile.h"

#include <QFrame>
#include <QIcon>

class QLineEdit;
class QPushButton;
class QTreeWidgetItem;
class TTreeWidget;
class TWgtLabelElided;

/// The left panel: the tree of projects of one project list, with its name and a filter. Main thread.
class TWgtPrjList : public QFrame
{
    Q_OBJECT

public:
    /// Where a new node goes.
    enum Place {
        Sibling, ///< directly below the current node, same parent
        Child    ///< last child of the current node
    };

    explicit TWgtPrjList(QWidget* parent = nullptr);
    ~TWgtPrjList() override;

    /// Reads a list; a relative file is taken against the folder of projects. expandMode is
    /// /Interface/PrjListExpand. False with errorText() or statusText(), the tree is empty then.
    [[nodiscard]] bool load(const QString& name, const QString& file, int expandMode);
    bool isLoaded() const;
    QString statusText() const;
    QString errorText() const;
    /// The tree as the file would have it.
    QList<TPrjListItem> items() const;
    /// The tree differs from what was read or written last: nodes, names, files, or what the user has
    /// unfolded.
    bool isChanged() const;
    /// The list counts as written from now on.
    void dropChanges();
    /// Somebody else has written the list's file since it was read or written here, and there are changes
    /// here that are worth a question: more than what is unfolded.
    bool isOutdated() const;
    /// Writes the list if it is changed. False with errorText(). What is unfolded is stored where that can be
    /// done: it goes into no file that somebody else has written, and a file that cannot be written is no
    /// failure for it alone.
    [[nodiscard]] bool save(const QString& path);
    /// Writes the list into another file, from which its nodes lead to the same projects; this one stays
    /// what it is. False with errorText().
    [[nodiscard]] bool saveCopy(const QString& path);

    QString listName() const;
    /// Absolute; empty when no list was ever loaded.
    QString listFile() const;
    /// Folder that the nodes' relative files are taken against.
    QString listFolder() const;

    void setTitleVisible(bool visible);
    void setFilterVisible(bool visible);
    /// The tree lets nodes be moved by drag and drop.
    void dragMode(bool on);

    bool hasNode() const;
    bool nodeHasChildren() const;
    QString nodeName() const;
    /// As the list holds it; empty for a group.
    QString nodeFile() const;
    /// nodeFile made absolute; empty for a group.
    QString nodePath() const;
    void setCurrentNode(const QString& name, const QString& file);
    /// Makes a node and makes it current, which opens its project. False when the file could not be
    /// written or, for a paste, exists; then there is no node and errorText() tells why.
    [[nodiscard]] bool insertNode(const QString& name, const QString& file, TPrjFileMode mode, Place place,
                                  const QByteArray& content = {});
    /// The node of a project file, absolute; a new one directly below another one, or at the end, if
    /// there is none. The current node stays.
    QTreeWidgetItem* nodeFor(const QString& path, QTreeWidgetItem* above);
    /// Null if there is none.
    QTreeWidgetItem* nodeOf(const QString& path) const;
    /// Removes the current node and all below it; the files stay.
    void deleteNode();
    void deleteChildren();

    int indexOfSelected() const;
    void selectByIndex(int index);
    /// Goes back to a node without opening its project: behind a refused switch.
    void restoreCurrent(QTreeWidgetItem* item);
    TTreeWidget* tree() const { return m_tree; }

signals:
    /// Absolute project file of the node that has become current; empty for a group.
    void signalProjectSelect(QString project_file);
    /// pos is global.
    void signalContextMenuRequested(QPoint pos);

public slots:
    void slotFilterClear();
    void slotFilterString(const QString& text);
    void slotItemSelect(QTreeWidgetItem* item);

protected:
    /// Down goes from the filter to the tree, Up from its first row back.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void makeTitle();
    void applyTitleColors();
    void makeFilter();
    void makeTree();
    void addNodes(int expandMode);
    bool hasOtherNodes() const;
    void showLoaded(bool loaded);
    QTreeWidgetItem* newNode(const QString& name, const QString& file) const;
    /// Unfolds what is above a node; that is none of the user's changes.
    void unfoldAbove(QTreeWidgetItem* node);
    QString pathOf(const QString& file) const;
    void setNode(QTreeWidgetItem* node, const QString& name, const QString& file) const;
    void keepExpanded(const QList<QTreeWidgetItem*>& nodes);
    void hideOthers(const QList<QTreeWidgetItem*>& nodes, const QString& text);
    void restoreExpanded(const QList<QTreeWidgetItem*>& nodes);
    bool goToTree();
    bool goToFilter();
    QTreeWidgetItem* firstVisible() const;

    bool m_isLoaded = false;
    TPrjListFile m_file;
    QList<TPrjListItem> m_stored; ///< as items() gave them when they were read or written last
    QString m_statusText;
    QString m_errorText;
    QString m_listName;
    QString m_listFile;
    QString m_filterText; ///< of the last call
    QIcon m_iconFile;
    QIcon m_iconFolder;
    TWgtLabelElided* m_title = nullptr;
    QFrame* m_titleLine = nullptr;
    QWidget* m_filterRow = nullptr;
    QLineEdit* m_filter = nullptr;
    QPushButton* m_filterClear = nullptr;
    QFrame* m_filterLine = nullptr;
    TTreeWidget* m_tree = nullptr;
};
