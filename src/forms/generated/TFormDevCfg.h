#pragma once

#include "forms/TFormCommand.h"

#include <QByteArray>
#include <QList>

class IFormDevCfgBase;
class QHBoxLayout;
class QPushButton;
class QTabWidget;
class QVBoxLayout;
class TFormDevCfgComboBoxLabel;
class TWgtEditStrHex;
struct TFormItem;

/// A register's form, drawn from lines in the item language: the controls and one string of bytes are
/// kept in step. A wrong line goes to the log file, and the form ends there.
class TFormDevCfg : public TFormCommand
{
    Q_OBJECT

public:
    /// value, data_default: hexadecimal. The value shown is as long as the default, marked when the stored
    /// one is not; what is stored changes only with the first edit. show_edit: a row for the whole value
    /// stands at the top.
    TFormDevCfg(int id_cmd, const QString& value, const QString& data_default, const QStringList& items,
                bool show_edit, QWidget* parent = nullptr);
    ~TFormDevCfg() override;

    /// The value as upper-case hexadecimal text.
    QString text() const;

public slots:
    void slotEditChanged(const QString& hexText);
    void slotChanged(const QByteArray& mask, const QByteArray& bits);
    void slotSetDefault();

private:
    void showParams() override;
    void addEditRow(const QString& defaultText);
    void run(const QStringList& lines);
    void add(const TFormItem& item);
    void addContainer(const TFormItem& item);
    void addScroll(const TFormItem& item);
    void addValueItem(IFormDevCfgBase* widget);
    void addLabel(const TFormItem& item);
    void open(QWidget* container);
    void place(QWidget* widget);
    void showItems();
    void showEdit();
    void markLength(const QByteArray& stored);
    void tell();

    QByteArray m_value;
    QByteArray m_default;
    TWgtEditStrHex* m_edit = nullptr;
    QPushButton* m_defaultButton = nullptr;
    QHBoxLayout* m_rowLayout = nullptr;
    QVBoxLayout* m_layout;
    QList<IFormDevCfgBase*> m_valueItems;
    QList<QObject*> m_owned; ///< all that the lines made, in that order
    QList<QWidget*> m_containers;
    QList<QTabWidget*> m_tabs;
    bool m_isComplete = false;
};
