#pragma once

#include <QString>

/// Who uses which terminal in this process: a terminal belongs to one user at a time. Any thread.
class TPortUsers
{
public:
    /// Takes the terminal of that path for the user. False when it is taken; holder is then who has it.
    [[nodiscard]] static bool take(const QString& path, const QString& user, QString& holder);
    static void release(const QString& path);
};
