#pragma once

#include "forms/edits/TNumberText.h"
#include "forms/edits/TWgtEditBase.h"

#include <QLineEdit>
#include <QVariant>

#include <limits>

/// A field for a number of type T (int, qint64, double). Only the user changes a value to fit the range:
/// one that was set from outside is shown as it is, and marked when it does not fit. What was asked for is
/// remembered beside what the range has left of it.
template <typename T> class TNumberEdit : public TWgtEditBase
{
public:
    T value() const { return m_value; }
    /// Shows the value; reports nothing.
    void setValue(T value)
    {
        *m_wish = value;
        follow(value);
    }
    /// Shows what the field beside it, which shares its wish, has taken over; reports nothing.
    void follow(T value)
    {
        m_value = value;
        m_isForeign = false;
        display(m_text.text(value));
        setFault(!fits());
    }
    /// What was set, stored or entered last, before the range cut it.
    T wish() const { return *m_wish; }
    void setWish(T wish) { *m_wish = wish; }
    /// Both fields ask for the same from now on; with lives as long as this.
    void shareWish(TNumberEdit& with) { m_wish = with.m_wish; }
    /// Shows a value as it is stored; reports nothing. Text that is no number of this type is shown as it
    /// stands, marked, and kept until the user enters another; value() is the nearest number meanwhile.
    void setStored(const QString& text)
    {
        T value{};
        const bool isNumber = TNumberText::readStored(text, value);
        // What is shown already was cut from the same wish.
        if (m_isForeign || !isNumber || value != m_value)
            *m_wish = value;
        follow(value);
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
    /// Shows as much of the wish as the maximum allows, after a change of the range; reports nothing. Text
    /// that is no number stays.
    void refit()
    {
        if (!m_isForeign)
            follow(qMin(*m_wish, m_max));
    }
    /// A number outside the range that the user types is kept and marked instead of being moved into it.
    void keepTyped() { m_keepsTyped = true; }
    /// A number as this field writes it.
    QString textOf(T value) const { return m_text.text(value); }

protected:
    TNumberEdit(T value, const TNumberText& text, QValidator* validator, QWidget* parent)
        : TWgtEditBase(validator, parent)
        , m_text(text)
        , m_value(value)
        , m_ownWish(value)
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
    void commit(const QString& text) override
    {
        const T value = number(text);
        enter(value, m_keepsTyped ? value : fitted(value));
    }
    void step(const QString& text, int delta) override
    {
        const T from = number(text);
        const T to = stepped(from, delta);
        // A key that moves nothing is no new wish.
        if (from != m_value || fitted(to) != m_value || m_isForeign)
            enterFitted(to);
    }
    void takeDefault() override { enterFitted(m_default); }

    T number(const QString& text) const
    {
        T value{};
        m_text.read(text, value);
        // What is shown may be rounded.
        return text == shown() ? m_value : value;
    }

    void enterFitted(T wish) { enter(wish, fitted(wish)); }
    void enter(T wish, T value)
    {
        const bool wasForeign = m_isForeign;
        const T before = m_value;
        *m_wish = wish;
        follow(value);
        if (wasForeign || m_value != before)
            report(m_value);
    }

    const TNumberText m_text;
    T m_min = std::numeric_limits<T>::lowest();
    T m_max = std::numeric_limits<T>::max();
    T m_default{};
    T m_value;
    T m_ownWish{};
    T* m_wish = &m_ownWish; ///< of this field or of the one that it shares it with
    bool m_keepsTyped = false;
    bool m_isForeign = false;
    QString m_foreign; ///< what is stored instead of the value, if m_isForeign
};
