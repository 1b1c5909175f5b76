#include "core/TAppData.h"

#include "core/TSettings.h"
#include "core/helpers.h"
#include "core/settingsRows.h"

#include <QMap>
#include <QRegularExpression>

namespace {

constexpr char typeGroup[] = "ProgTypeList";
constexpr char typeKey[] = "Type";
constexpr char nameGroup[] = "ProgNameList";
constexpr char nameKey[] = "Name";

bool readField(const TSettings& settings, const QString& key, bool def)
{
    return settings.readBool(key, def);
}

int readField(const TSettings& settings, const QString& key, int def)
{
    return settings.readInt(key, def);
}

QString readField(const TSettings& settings, const QString& key, const QString& def)
{
    return settings.readString(key, def);
}

QColor readField(const TSettings& settings, const QString& key, const QColor& def)
{
    return settings.readColor(key, def);
}

TSplitterPos readField(const TSettings& settings, const QString& key, const TSplitterPos& def)
{
    return settings.readSizes(key, def);
}

/// The rows of a list that are of the right length, in the order of their numbers. The store itself
/// gives keys in the order of text, with Name10 before Name2.
QList<QStringList> readRows(const TSettings& settings, const QString& group, const QString& key, int length)
{
    const QString prefix = group + QLatin1Char('/') + key;
    const QRegularExpression pattern(QStringLiteral("^%1/%2([0-9]+)$").arg(group, key));
    QMap<int, QStringList> rows;
    for (const QString& name : settings.allKeys()) {
        const QString digits = pattern.match(name).captured(1);
        bool isNumber = false;
        const int number = digits.toInt(&isNumber);
        const QStringList row = isNumber ? settings.readList(prefix + digits) : QStringList();
        if (row.size() == length)
            rows.insert(number, row);
    }
    return rows.values();
}

void writeRows(TSettings& settings, const QString& group, const QString& key, const QList<QStringList>& rows)
{
    settings.remove(group);
    for (int i = 0; i < rows.size(); ++i)
        settings.write(QStringLiteral("%1/%2%3").arg(group, key, QString::number(i)), rows.at(i));
}

QList<QStringList> toRows(const TProgType& types)
{
    QList<QStringList> rows;
    for (int i = 0; i < types.count(); ++i)
        rows.append({types.name(i), types.file(i)});
    return rows;
}

QList<QStringList> toRows(const TProgName& names)
{
    QList<QStringList> rows;
    for (int i = 0; i < names.count(); ++i) {
        const TProgRecord record = names.record(i);
        rows.append({record.enabled ? QStringLiteral("1") : QStringLiteral("0"), names.name(i), record.port,
                     record.type});
    }
    return rows;
}

QString settingsFile()
{
    return fileInAppDir(QStringLiteral("ini"));
}

void writeFields(TSettings& settings, const TAppData& data, Written group)
{
    for (const SettingsRow& row : settingsRows()) {
        if (row.written != group)
            continue;
        std::visit([&](auto field) { settings.write(QLatin1String(row.key), data.*field); }, row.field);
    }
}

/// Brings everything written so far to the file.
bool finish(TSettings& settings)
{
    settings.sync();
    if (settings.status() != QSettings::AccessError)
        return true;
    logError(QStringLiteral("Settings"), QStringLiteral("%1: cannot be written").arg(settings.fileName()));
    return false;
}

} // namespace

void TAppData::load()
{
    const TSettings settings(settingsFile());
    const TAppData defaults;
    for (const SettingsRow& row : settingsRows()) {
        const auto read = [&](auto field) {
            this->*field = readField(settings, QLatin1String(row.key), defaults.*field);
        };
        std::visit(read, row.field);
    }
    progTypes.clear();
    for (const QStringList& row : readRows(settings, typeGroup, typeKey, 2))
        progTypes.append(row.at(0), row.at(1));
    progNames.clear();
    for (const QStringList& row : readRows(settings, nameGroup, nameKey, 4))
        progNames.append(row.at(1), row.at(0) == QLatin1String("1"), row.at(2), row.at(3));
}

bool TAppData::saveApp() const
{
    TSettings settings(settingsFile());
    writeFields(settings, *this, Written::App);
    writeRows(settings, typeGroup, typeKey, toRows(progTypes));
    writeRows(settings, nameGroup, nameKey, toRows(progNames));
    return finish(settings);
}

bool TAppData::saveWindow() const
{
    TSettings settings(settingsFile());
    writeFields(settings, *this, Written::Window);
    return finish(settings);
}
