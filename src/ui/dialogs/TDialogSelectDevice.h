#pragma once

#include "ui/TDialogBase.h"

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

/// Chooses one of many names with a filter: chips, or families of the detection.
class TDialogSelectDevice : public TDialogBase
{
    Q_OBJECT

public:
    /// keys tells where the dialog's place is kept: that of the chips or that of the families. current is
    /// preselected.
    TDialogSelectDevice(const QString& title, const TWindowKeys& keys, const QStringList& names,
                        const QString& current, QWidget* parent = nullptr);

    /// Chooses a chip of devices.lst; empty when the dialog was refused.
    static QString selectChip(const QString& current, QWidget* parent = nullptr);
    /// Chooses a family of the detection; empty when the dialog was refused.
    static QString selectFamily(const QString& current, QWidget* parent = nullptr);

    /// Empty with no visible selection.
    QString selected() const;

    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    void slotFilterString(const QString& text);
    void slotClearFilter();

private:
    void buildFilter(QBoxLayout* layout);
    /// Shows what the description of the selected chip warns of. files: by name.
    void showWarnings(const QHash<QString, QString>& files);
    void fitWarning();
    void selectOnly(QListWidgetItem* only);
    void updateAccept();

    QLineEdit* m_filter = nullptr;
    QPushButton* m_clear = nullptr;
    QListWidget* m_list = nullptr;
    QLabel* m_warning = nullptr;
    QPushButton* m_accept = nullptr;
};
