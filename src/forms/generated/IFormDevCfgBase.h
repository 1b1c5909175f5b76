#pragma once

#include <QByteArray>
#include <QWidget>

/// A control of a register form that follows the register's value: it shows and changes the bits of its
/// mask.
class IFormDevCfgBase : public QWidget
{
    Q_OBJECT

public:
    /// The control's present share of the value.
    virtual QByteArray data() const = 0;
    /// Shows the form's value.
    virtual void setData(const QByteArray& value) = 0;

signals:
    void signalChanged(QByteArray mask, QByteArray data);

protected:
    IFormDevCfgBase(const QByteArray& mask, bool inverse, QWidget* parent)
        : QWidget(parent)
        , m_isInverse(inverse)
        , m_mask(mask)
    {
    }

    const bool m_isInverse;
    const QByteArray m_mask;
};
