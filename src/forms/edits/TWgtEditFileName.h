#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

/// The name of a file, typed, chosen in a dialog or dropped.
class TWgtEditFileName : public QWidget
{
    Q_OBJECT

public:
    /// What the dialog offers: files that are there, or any name.
    enum Purpose { Open, Save };

    explicit TWgtEditFileName(const QString& file, QWidget* parent = nullptr);

    QString value() const;
    /// Shows the name; reports nothing.
    void setValue(const QString& file);
    /// The folder that a chosen name below it is shown relative to; names are taken against it.
    void setBaseFolder(const QString& folder) { m_base = folder; }
    void setFilter(const QString& filter) { m_filter = filter; }
    void setTitle(const QString& title) { m_title = title; }
    void setPurpose(Purpose purpose) { m_purpose = purpose; }
    void setButtonTip(const QString& text);

    QLineEdit* lineEdit() const { return m_edit; }
    QPushButton* button() const { return m_button; }

signals:
    void signalChanged(QString file);

public slots:
    void slotTextChanged(const QString& text);
    /// Shows the dialog and returns at once.
    void slotOpenWindowFileSelect();
    /// Takes over a name as the dialog gives it, or as it is dropped: absolute.
    virtual void choose(const QString& file);

private:
    QLineEdit* m_edit;
    QPushButton* m_button;
    QString m_base;
    QString m_filter;
    QString m_title;
    Purpose m_purpose = Open;
};
