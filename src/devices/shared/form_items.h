#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

/// One line of a register form in the item language.
struct TFormItem
{
    enum Kind {
        Frame,
        Tabs,
        Tab,
        Row,
        Panel,
        Group,
        Label,
        Display,
        CheckBox,
        ComboBox,
        Choice,
        Preset,
        Close,
        CloseTabs
    };
    /// Where the label of a control stands; of a check box, the direction.
    enum Side { Hidden, Left, Right, AboveLeft, AboveCentre, AboveRight };

    Kind kind = Label;
    Side side = Hidden;
    QByteArray bits; ///< mask of a control, or data of a choice or preset
    QString text;
    QString tip;
    int extent = 0; ///< pixels: width of a display, height of a preset; 0 leaves it to the form
    bool isInverse = false;
    bool isEnabled = true;
    bool isDanger = false;
};

/// What a list of lines says, up to the first one that is wrong.
struct TFormItems
{
    QList<TFormItem> items;
    bool isGood = false;
    int badLine = -1; ///< index of the wrong line; -1 when there is none or the list is empty
    QString badText;  ///< that line as it stands
};

/// What one line says, whatever stands before it.
struct TFormLine
{
    QString tag;
    QStringList fields; ///< behind the tag
    TFormItem item;     ///< left at its defaults unless isGood
    bool isKnown = false;
    /// The tag is known and has the fields that it needs.
    bool isGood = false;
    /// It has fields that nothing reads.
    bool hasSurplus = false;
};

TFormLine readFormLine(const QString& line);

/// Reads a form. A list is wrong too when it is empty. Containers need not be closed; what closes one
/// closes the innermost, whatever opened it.
TFormItems parseFormItems(const QStringList& lines);
