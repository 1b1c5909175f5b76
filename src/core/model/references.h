#pragma once

#include "base/types.h"

#include <functional>

// Parameters that name a configuration or a command of the open project. In the model they hold its
// id, in a file its position, and nothing where it is unknown: -1. Any thread.

/// The id that a parameter holds: -1 for a missing one, for text that is no number, and for a number that
/// no id can be, so that none of them is taken for the first command or configuration.
int referenceId(const QVariant& value);

/// Maps an id to what stands in its place; -1 for an id that leads nowhere.
using TIdMap = std::function<int(int id)>;

/// The value of the parameter key of a command, its ids replaced; the value itself as text when it is
/// no reference.
QString mappedReference(const QString& cmd, const QString& key, const QVariant& value, const TIdMap& cfg,
                        const TIdMap& command);
/// Takes the references out of a whole command, which is about to enter another project.
void dropReferences(TData& data);
