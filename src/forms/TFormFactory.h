#pragma once

#include "core/model/IFormFactory.h"

/// Makes the forms of all commands: those of a chip family as the family describes them, those of the
/// programmer and of the tools by the command's word. Main thread.
class TFormFactory : public IFormFactory
{
public:
    QWidget* createForm(const IDevice& device, const TData& data) override;
    QWidget* createDeviceForm(const IDevice& device, const TData& data) override;
    bool resultText(QWidget* form, int id_cmd, QString& text) override;
    bool updateForm(QWidget* form, const TData& data) override;
};
