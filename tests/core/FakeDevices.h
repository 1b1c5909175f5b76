#pragma once

#include "core/IDevice.h"
#include "core/IDeviceCatalogue.h"
#include "core/TCmdCode.h"
#include "core/keys.h"

#include <QStringList>

/// A device without a family behind it: a chip with two registers, the programmer's or the flow class.
class FakeDevice : public IDevice
{
public:
    FakeDevice(const QString& name, const QStringList& words, const QString& registerDefault)
        : IDevice(name)
        , m_words(words)
        , m_default(registerDefault)
    {
        ++alive;
    }
    ~FakeDevice() override { --alive; }

    bool hasCommand(const QString& key) const override { return m_words.contains(key); }
    QStringList commandKeys() const override { return m_words; }
    void setDefaultParams(TData&) const override {}
    QString commandTitle(const TData& data) const override { return data.value(key::cmd).toString(); }
    QString paramsText(const TData&, QWidget*) const override { return {}; }
    QWidget* createForm(const TData&) const override { return nullptr; }
    TData normalizeParams(const TData& data) const override { return data; }
    bool refreshParams(TData& data) const override
    {
        const QString word = data.value(key::cmd).toString();
        if (m_default.isEmpty() || !(word.startsWith(QLatin1String("status_reg")) || word == cmd::fuse_write))
            return false;
        data.insert(key::data, m_default);
        return true;
    }
    /// Invalid exactly with the parameter "bad".
    bool checkParams(const TData& data) const override { return !data.contains(QStringLiteral("bad")); }
    bool checkDeviceParams(const TData&) const override { return true; }
    bool setDeviceDefaults(TData& data) const override
    {
        if (m_default.isEmpty())
            return false;
        data.insert(key::clk, m_default.size());
        return true;
    }
    QWidget* createDeviceForm(const TData&) const override { return nullptr; }
    QByteArray deviceParamBlock(const TData&) const override { return {}; }
    IDeviceExec* createExec(const TData&) const override { return nullptr; }

    inline static int alive = 0;

private:
    QStringList m_words;
    QString m_default;
};

/// Makes chips of description files named "NAME.dev" with the bytes of its register in front:
/// "0102/NAME.dev"; any other file cannot be read. Also makes each class for its own word.
class FakeCatalogue : public IDeviceCatalogue
{
public:
    IDevice* create(const QString& name, const QString& file) override
    {
        questions.append(name + QLatin1Char('|') + file);
        if (file.isEmpty())
            return createClass(name);
        if (!file.endsWith(QLatin1String(".dev")))
            return nullptr;
        return new FakeDevice(name, chipWords(), file.section(QLatin1Char('/'), 0, 0));
    }

    static QStringList chipWords()
    {
        return {cmd::erase, cmd::file_write, cmd::status_reg_write, cmd::fuse_write, cmd::leave};
    }

    QStringList questions;

private:
    static IDevice* createClass(const QString& name)
    {
        if (name == dev_class::tools)
            return new FakeDevice(name, TCmdCode::toolsKeys(), {});
        if (name == dev_class::prog)
            return new FakeDevice(name, TCmdCode::progKeys(), {});
        return name == dev_class::dev25 ? new FakeDevice(name, chipWords(), {}) : nullptr;
    }
};
