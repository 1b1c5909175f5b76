#include "forms/prog/TFormProgSetDevice.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "forms/IFormHost.h"
#include "forms/edits/TWgtDeviceView.h"
#include "forms/edits/align_labels.h"
#include "forms/edits/name_line.h"

#include <QFormLayout>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int ruleLength = 50;
}

TFormProgSetDevice::TFormProgSetDevice(const TData& params)
    : TFormCommand(params, {key::device, key::file})
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    QFormLayout* rows = formRows(nullptr);
    const TNameLine line = addNameLine(rows, langText(Text::LabelDevice), langText(Text::SelectDevice));
    m_name = line.edit;
    layout->addLayout(rows);
    m_view = new TWgtDeviceView(langText(Text::LabelDeviceInfo), langText(Text::LabelDevicePins), ruleLength,
                                this);
    layout->addWidget(m_view, 1);
    TFormProgSetDevice::showParams();
    connect(line.button, &QPushButton::clicked, this, &TFormProgSetDevice::slotBtnSelectDevice);
    connect(m_view, &TWgtDeviceView::signalChangedCmdParam, this, &TFormCommand::signalChangedCmdParam);
}

void TFormProgSetDevice::showParams()
{
    const TBinding bound = project().binding(idCmd());
    showName(m_name, textParam(key::device), bound.family != nullptr);
    m_view->showDevice(bound);
    alignLabels(this);
}

void TFormProgSetDevice::slotBtnSelectDevice()
{
    const QPointer<TFormProgSetDevice> self(this);
    const QString name = formHost() ? formHost()->selectChip(textParam(key::device), window()) : QString();
    if (!self || name.isEmpty())
        return;
    setParam(key::device, name);
    setParam(key::file, TDeviceList::deviceFiles().value(name));
    report();
    // The page may have taken another form in the meantime.
    if (self)
        showParams();
}
