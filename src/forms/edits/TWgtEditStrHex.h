#pragma once

#include "forms/edits/TWgtEditBase.h"

#include <optional>

/// Bytes as hexadecimal text; blanks are kept as they are typed.
class TWgtEditStrHex : public TWgtEditBase
{
    Q_OBJECT

public:
    explicit TWgtEditStrHex(const QString& value, QWidget* parent = nullptr);

    QString value() const { return m_value; }
    /// Shows another text and reports it. The same text does nothing.
    void setValue(const QString& value);
    /// What "*" gives; before the first call it does nothing.
    void setDefaultValue(const QString& value) { m_default = value; }

signals:
    void valueChanged(QString value);
    /// The user wants the default, which may be shown already.
    void defaultTaken();

private:
    void commit(const QString& text) override { setValue(text); }
    void step(const QString&, int) override {}
    void takeDefault() override
    {
        if (!m_default)
            return;
        setValue(*m_default);
        emit defaultTaken();
    }

    QString m_value;
    std::optional<QString> m_default;
};
