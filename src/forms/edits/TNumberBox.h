#pragma once

#include "forms/edits/TNumberEdit.h"
#include "forms/edits/star_button.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVector>

/// One or two fields on the same number, and behind them a button "*" that gives the default. Tool tips
/// tell range and default.
template <typename T> class TNumberBox : public QWidget
{
public:
    // A window takes the focus from its fields only after this.
    ~TNumberBox() override { TWgtEditBase::silence(*this); }

    T value() const { return first()->value(); }
    /// Shows the value; reports nothing.
    void setValue(T value)
    {
        each([value](TNumberEdit<T>* part) { part->setValue(value); });
    }
    /// As TNumberEdit::setStored.
    void setStored(const QString& text)
    {
        each([&text](TNumberEdit<T>* part) { part->setStored(text); });
    }
    /// As TNumberEdit::stored.
    QVariant stored() const { return first()->stored(); }
    T minimum() const { return first()->minimum(); }
    T maximum() const { return first()->maximum(); }
    /// As TNumberEdit::setRange.
    void setRange(T min, T max)
    {
        each([this, min, max](TNumberEdit<T>* part) {
            part->setRange(min, max);
            part->setRangeText(rangeText(*part));
        });
    }
    T defaultValue() const { return first()->defaultValue(); }
    void setDefaultValue(T value)
    {
        each([value](TNumberEdit<T>* part) { part->setDefaultValue(value); });
        setDefaultText(defaultText());
    }
    bool fits() const { return first()->fits(); }
    /// Moves the value into the range; reports nothing.
    void clamp()
    {
        each([](TNumberEdit<T>* part) { part->clamp(); });
    }
    /// As TNumberEdit::wish.
    T wish() const { return first()->wish(); }
    void setWish(T wish) { first()->setWish(wish); }
    /// As TNumberEdit::refit.
    void refit()
    {
        each([](TNumberEdit<T>* part) { part->refit(); });
    }
    /// As TNumberEdit::keepTyped.
    void keepTyped()
    {
        each([](TNumberEdit<T>* part) { part->keepTyped(); });
    }

    /// Own words for the range, instead of the plain numbers; setRange puts those back.
    void setRangeText(const QString& text)
    {
        each([&text](TNumberEdit<T>* part) { part->setRangeText(text); });
    }
    /// Own words for the default; setDefaultValue puts the plain ones back.
    void setDefaultText(const QString& text) { m_button->setToolTip(text); }

    QPushButton* button() const { return m_button; }

protected:
    /// The fields become children of this and stand in this order.
    TNumberBox(const QVector<TNumberEdit<T>*>& parts, QWidget* parent)
        : QWidget(parent)
        , m_parts(parts)
        , m_button(starButton(this))
    {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(3);
        each([this, layout](TNumberEdit<T>* part) {
            layout->addWidget(part);
            part->shareWish(*first());
        });
        layout->addWidget(m_button);
        setFocusProxy(first());
        setDefaultValue(T{});
    }

    /// As if the user had entered the default. What is being typed into another field goes.
    void enterDefault()
    {
        for (TNumberEdit<T>* part : m_parts.mid(1))
            part->setStored(stored().toString());
        first()->setDefault();
    }
    TNumberEdit<T>* first() const { return m_parts.first(); }
    TNumberEdit<T>* part(int i) const { return m_parts.at(i); }

private:
    /// "%1..%2" with the bounds of a field.
    QString rangeText(const TNumberEdit<T>& part) const
    {
        return QStringLiteral("%1..%2").arg(part.textOf(part.minimum()), part.textOf(part.maximum()));
    }
    /// As every field writes it, but for the first in brackets.
    QString defaultText() const
    {
        QString text = QStringLiteral("Default: %1").arg(first()->textOf(defaultValue()));
        for (const TNumberEdit<T>* part : m_parts.mid(1))
            text += QStringLiteral(" [%1]").arg(part->textOf(defaultValue()));
        return text;
    }
    template <typename Use> void each(const Use& use)
    {
        for (TNumberEdit<T>* part : m_parts)
            use(part);
    }

    const QVector<TNumberEdit<T>*> m_parts;
    QPushButton* m_button;
};
