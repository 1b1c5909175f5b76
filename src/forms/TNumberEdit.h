#pragma once

#include "forms/TNumberText.h"
#include "forms/TWgtEditBase.h"

#include <QLineEdit>
#include <QVariant>

#include <limits>

/// A field for a number of type T (int, qint64, double). Only the user changes a value to fit the range:
/// one that was set from outside is shown as it is, and marked when it does not fit.
template <typename T> class TNumberEdit : public TWgtEditBase
{
public:
    T value() const { return m_value; }
    /// Shows the value; reports nothing.
    void setValue(T value)
    {
        m_value = value;
        m_isForeign = false;
        display(m_text.text(value));
        setFault(!fits());
    }
    /// Shows a value as it is stored; reports nothing. Text that is no number of this type is shown as it
    /// stands, marked, and kept until the user enters another; value() is the nearest number meanwhile.
    void setStored(const QString& text)
    {
        T value{};
        const bool isNumber = TNumberText::readStored(text, value);
        setValue(value);
        if (isNumber)
            return;
        m_isForeign = true;
        m_foreign = text;
        display(text);
        setFault(true);
    }
    /// What is to be stored: the value, or the text of setStored() as long as that stands.
    QVariant stored() const { return m_isForeign ? QVariant(m_foreign) : QVariant(m_value); }

    T minimum() const { return m_min; }
    T maximum() const { return m_max; }
    /// Both ends included. A maximum below the minimum becomes the minimum.
    void setRange(T min, T max)
    {
        m_min = min;
        m_max = qMax(min, max);
        setFault(!fits());
    }

    T defaultValue() const { return m_default; }
    /// What "*" gives.
    void setDefaultValue(T value) { m_default = value; }

    /// The value as it is shown lies in the range.
    bool fits() const
    {
        if (m_isForeign)
            return false;
        T shown{};
        m_text.read(m_text.text(m_value), shown);
        return allows(shown);
    }
    /// Moves the value into the range; reports nothing.
    void clamp()
    {
        if (!fits())
            setValue(fitted(m_value));
    }
    /// A number as this field writes it.
    QString textOf(T value) const { return m_text.text(value); }

protected:
    TNumberEdit(T value, const TNumberText& text, QValidator* validator, QWidget* parent)
        : TWgtEditBase(validator, parent)
        , m_text(text)
        , m_value(value)
    {
        display(m_text.text(value));
    }

    /// The user has changed the value.
    virtual void report(T value) = 0;
    virtual bool allows(T value) const { return value >= m_min && value <= m_max; }
    /// The value nearest to this one that the range allows.
    virtual T fitted(T value) const { return qBound(m_min, value, m_max); }
    /// Where a step from value leads.
    virtual T stepped(T value, int delta) const
    {
        const bool isAtEnd = delta > 0 ? value >= m_max : value <= m_min;
        return isAtEnd ? value : T(value + T(delta));
    }

private:
    void commit(const QString& text) override { enter(number(text)); }
    void step(const QString& text, int delta) override { enter(stepped(number(text), delta)); }
    void takeDefault() override { enter(m_default); }

    T number(const QString& text) const
    {
        T value{};
        m_text.read(text, value);
        // What is shown may be rounded.
        return text == shown() ? m_value : value;
    }

    void enter(T value)
    {
        const bool wasForeign = m_isForeign;
        const T before = m_value;
        setValue(fitted(value));
        if (wasForeign || m_value != before)
            report(m_value);
    }

    const TNumberText m_text;
    T m_min = std::numeric_limits<T>::lowest();
    T m_max = std::numeric_limits<T>::max();
    T m_default{};
    T m_value;
    bool m_isForeign = false;
    QString m_foreign; ///< what is stored instead of the value, if m_isForeign
};
