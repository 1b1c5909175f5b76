#pragma once

#include "base/types.h"

#include <QString>

class IDevice;
class QWidget;

/// What makes the parameter forms. The engine has none of its own: the window library registers one,
/// and without it every form is null. Set once, on the main thread, before the first form is asked for.
class IFormFactory
{
public:
    virtual ~IFormFactory() = default;

    /// A new form for the command data["cmd"] of the class device, owned by the caller; null if it has none.
    virtual QWidget* createForm(const IDevice& device, const TData& data) = 0;
    /// The family's part of the form of set_device, owned by the caller; null if it has none.
    virtual QWidget* createDeviceForm(const IDevice& device, const TData& data) = 0;
    /// The text that the open form of a command shows as its result; false if form is not such a form
    /// or belongs to another command.
    virtual bool resultText(QWidget* form, int id_cmd, QString& text) = 0;
    /// Shows new data of the command in its open form, with the form's signals blocked; false if form
    /// belongs to another command or cannot be brought up to date.
    virtual bool updateForm(QWidget* form, const TData& data) = 0;
};

/// The registered factory, or null.
IFormFactory* formFactory();
/// Registers the factory, borrowed.
void setFormFactory(IFormFactory* factory);
