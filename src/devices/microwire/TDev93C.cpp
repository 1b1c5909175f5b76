#include "devices/microwire/TDev93C.h"

#include "base/keys.h"
#include "devices/microwire/TDev93CExec.h"

namespace {

constexpr TCommandRow rows[] = {
    {cmd::set_clk, Shape::Clock},
    {cmd::erase, Shape::Plain},
    {cmd::test_empty, Shape::Plain, Area::Whole, Action::TestEmpty},
    {cmd::lock, Shape::Plain},
    {cmd::unlock, Shape::Plain},
    {cmd::separator, Shape::Separator},
    {cmd::char_write, Shape::Char, Area::Whole, Action::Write},
    {cmd::char_verify, Shape::Char, Area::Whole, Action::Verify},
    {cmd::data_read, Shape::Data, Area::Whole, Action::Read},
    {cmd::data_write, Shape::Data, Area::Whole, Action::Write},
    {cmd::data_verify, Shape::Data, Area::Whole, Action::Verify},
    {cmd::file_read, Shape::File, Area::Whole, Action::Read},
    {cmd::file_write, Shape::File, Area::Whole, Action::Write},
    {cmd::file_verify, Shape::File, Area::Whole, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::leave, Shape::Leave},
};

} // namespace

TDev93C::TDev93C(const QString& name, const TData& description)
    : TFamilyDevice(name, description, rows, false)
{
}

TFormSpec TDev93C::formSpec(const TData& data) const
{
    TFormSpec spec = TFamilyDevice::formSpec(data);
    const TCommandRow* command = row(data);
    if (command && (command->key == cmd::lock || command->key == cmd::unlock))
        spec.kind = TFormSpec::Kind::Empty;
    return spec;
}

QByteArray TDev93C::deviceParamBlock(const TData& data) const
{
    return IDevice::deviceParamBlock(data);
}

IDeviceExec* TDev93C::createExec(const TData& data) const
{
    return new TDev93CExec(data);
}
