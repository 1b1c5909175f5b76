#include "ui/setup/setup_editors.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/helpers.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TFileDrop.h"
#include "forms/edits/TWgtEditDec.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/language_files.h"
#include "ui/setup/TWgtColorEnableEdit.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleFactory>

namespace {

/// What stores a value if it is no longer the one that was shown: a value that the editor cannot show, as
/// a file edited by hand may hold, stays as long as nobody touches it.
template <class Target, class Read>
std::function<void()> storeChange(Target TAppData::*field, const Read& read)
{
    const auto shown = read();
    return [field, read, shown] {
        // Workers read the folders under the same lock.
        if (read() != shown)
            project().locked([&] { appData().*field = static_cast<Target>(read()); });
    };
}

TSetupEditor makeCheck(const TSetupRow& row, QWidget* parent)
{
    auto* box = new QCheckBox(setupText(row), parent);
    const auto read = [box] { return box->isChecked(); };
    if (const auto* flag = std::get_if<bool TAppData::*>(&row.field)) {
        box->setChecked(appData().**flag);
        return {box, false, storeChange(*flag, read)};
    }
    const auto number = std::get<int TAppData::*>(row.field);
    box->setChecked(appData().*number != 0);
    return {box, false, storeChange(number, read)};
}

TSetupEditor makeColor(const TSetupRow& row, QWidget* parent)
{
    const auto field = std::get<QColor TAppData::*>(row.field);
    auto* edit = new TWgtColorEnableEdit(setupText(row), row.enable != nullptr, parent);
    edit->setColor(appData().*field);
    const auto storeColor = storeChange(field, [edit] { return edit->color(); });
    if (!row.enable)
        return {edit, false, storeColor};
    edit->setEnabledColor(appData().*row.enable);
    const auto storeEnable = storeChange(row.enable, [edit] { return edit->isEnabledColor(); });
    return {edit, false, [storeColor, storeEnable] {
                storeColor();
                storeEnable();
            }};
}

TSetupEditor makeNumber(const TSetupRow& row, QWidget* parent)
{
    const auto field = std::get<int TAppData::*>(row.field);
    auto* edit = new TWgtEditDec(appData().*field, parent);
    edit->setRange(0, 9999);
    edit->setRangeText(QStringLiteral("0..9999"));
    const auto read = [edit] {
        edit->editingFinished(); // also what was typed and not left yet
        return edit->value();
    };
    return {edit, true, storeChange(field, read)};
}

TSetupEditor makeExpand(const TSetupRow& row, QWidget* parent)
{
    const auto field = std::get<int TAppData::*>(row.field);
    auto* box = new TComboBox(parent);
    for (Text text : {Text::TreeAsSaved, Text::TreeCollapsed, Text::TreeExpanded})
        box->addItem(langText(text));
    box->setCurrentIndex(appData().*field < box->count() ? appData().*field : -1);
    return {box, true, storeChange(field, [box] { return box->currentIndex(); })};
}

/// A choice of texts that stand for values; a value that is not among them is added as it is.
TSetupEditor makeChoice(const TSetupRow& row, const QMap<QString, QString>& valueOfText, QWidget* parent)
{
    const auto field = std::get<QString TAppData::*>(row.field);
    auto* box = new TComboBox(parent);
    for (auto it = valueOfText.begin(); it != valueOfText.end(); ++it)
        box->addItem(it.key(), it.value());
    const QString value = appData().*field;
    if (box->findData(value) < 0)
        box->addItem(value, value);
    box->setCurrentIndex(box->findData(value));
    return {box, true, storeChange(field, [box] { return box->currentData().toString(); })};
}

QMap<QString, QString> styles()
{
    QMap<QString, QString> map;
    for (const QString& name : QStyleFactory::keys())
        map.insert(name, name);
    return map;
}

QString askPath(const TSetupRow& row, const QString& current, QWidget* parent)
{
    const QString start = absFile(QCoreApplication::applicationDirPath(), current);
    return row.kind == TSetupKind::Folder ? QFileDialog::getExistingDirectory(parent, setupText(row), start)
                                          : askFile(parent, setupText(row), start, QStringLiteral("*.lpl"));
}

TSetupEditor makePath(const TSetupRow& row, QWidget* parent)
{
    const auto field = std::get<QString TAppData::*>(row.field);
    auto* widget = new QWidget(parent);
    const TBrowseLine parts = makeBrowseLine(appData().*field, widget);
    parts.layout->setContentsMargins(0, 0, 0, 0);
    widget->setLayout(parts.layout);
    QLineEdit* line = parts.line;
    QObject::connect(parts.button, &QPushButton::clicked, widget, [row, line, widget] {
        const QString path = askPath(row, line->text(), widget);
        if (!path.isEmpty())
            line->setText(relToApp(path));
    });
    new TFileDrop(line, [row, line](const QString& path) {
        const bool isFileInFolder = row.kind == TSetupKind::Folder && QFileInfo(path).isFile();
        line->setText(relToApp(isFileInFolder ? absDir(path) : path));
    });
    // An empty path would mean the working directory, so it is taken as no change.
    const QString old = appData().*field;
    const auto read = [line, old] {
        const QString path = line->text().trimmed();
        return path.isEmpty() ? old : path;
    };
    return {widget, true, storeChange(field, read)};
}

} // namespace

TSetupEditor makeSetupEditor(const TSetupRow& row, QWidget* parent)
{
    switch (row.kind) {
    case TSetupKind::Number:
        return makeNumber(row, parent);
    case TSetupKind::Expand:
        return makeExpand(row, parent);
    case TSetupKind::Style:
        return makeChoice(row, styles(), parent);
    case TSetupKind::Language:
        return makeChoice(row, languageFiles(appData().PathLanguage), parent);
    case TSetupKind::File:
    case TSetupKind::Folder:
        return makePath(row, parent);
    case TSetupKind::Color:
        return makeColor(row, parent);
    case TSetupKind::Check:
        break;
    }
    return makeCheck(row, parent);
}

QString setupText(const TSetupRow& row)
{
    if (row.kind == TSetupKind::Number)
        return langText(Text::SettingPixels).arg(plainTitle(row.text));
    return row.text != Text::None ? langText(row.text) : cmdCode().name(row.command);
}
