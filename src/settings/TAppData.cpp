#include "settings/TAppData.h"

#include "base/TSettings.h"
#include "base/helpers.h"
#include "base/ini_text.h"
#include "base/json_file.h"
#include "settings/settingsRows.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <functional>
#include <memory>

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

/// One of the two lists as it stands in the file.
struct Rows
{
    /// The rows that are of the right length, in the order of their numbers. The store itself gives keys in
    /// the order of text, with Name10 before Name2.
    QMap<int, QStringList> good;
    QSet<QString> goodKeys;
    QSet<int> otherNumbers; ///< of rows that are none and stay in the file
};

Rows readRows(const TSettings& settings, const QString& group, const QString& key, int length)
{
    const QString prefix = group + QLatin1Char('/') + key;
    const QRegularExpression pattern(QStringLiteral("^%1/%2([0-9]+)$").arg(group, key));
    Rows rows;
    for (const QString& name : settings.allKeys()) {
        bool isNumber = false;
        const int number = pattern.match(name).captured(1).toInt(&isNumber);
        if (!isNumber)
            continue;
        const QStringList row = settings.readList(name);
        if (row.size() != length) {
            rows.otherNumbers.insert(number);
            continue;
        }
        rows.good.insert(number, row);
        rows.goodKeys.insert(name);
    }
    return rows;
}

/// Numbers that other lines of the file have are left to them.
void writeRows(TSettings& settings, const QString& group, const QString& key, const QList<QStringList>& rows,
               const Rows& old)
{
    int number = 0;
    for (const QStringList& row : rows) {
        while (old.otherNumbers.contains(number))
            ++number;
        settings.write(QStringLiteral("%1/%2%3").arg(group, key, QString::number(number++)), row);
    }
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

/// The settings file for reading: one with an open quote by way of a copy in which the quote is closed.
class StoredSettings
{
public:
    StoredSettings()
        : m_settings(readable())
    {
    }

    const TSettings& get() const { return m_settings; }

private:
    QString readable()
    {
        QByteArray text;
        QString error;
        if (!readWholeFile(settingsFile(), text, error))
            return settingsFile();
        const QByteArray closed = closedIni(text);
        if (closed == text)
            return settingsFile();
        m_folder = std::make_unique<QTemporaryDir>();
        const QString copy = m_folder->filePath(QStringLiteral("settings.ini"));
        return writeFileSafely(copy, closed, error) ? copy : settingsFile();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    const TSettings m_settings;
};

void writeFields(TSettings& settings, const TAppData& data, Written group)
{
    for (const SettingsRow& row : settingsRows()) {
        if (row.written != group)
            continue;
        std::visit([&](auto field) { settings.write(QLatin1String(row.key), data.*field); }, row.field);
    }
}

/// Puts settings into the file, whose other lines stay. The store writes them to a file of their own first,
/// since it would throw away what is no setting. False with the reason in error.
bool store(const std::function<void(TSettings&)>& write, const QSet<QString>& dropped, QString& error)
{
    const QString file = settingsFile();
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        error = folder.errorString();
        return false;
    }
    const QString freshFile = folder.filePath(QStringLiteral("settings.ini"));
    {
        TSettings settings(freshFile);
        write(settings);
    }
    QByteArray fresh;
    QByteArray old;
    if (!readWholeFile(freshFile, fresh, error) ||
        (QFileInfo::exists(file) && !readWholeFile(file, old, error)))
        return false;
    const auto isDropped = [&](const QByteArray& key) { return dropped.contains(QString::fromUtf8(key)); };
    return writeFileSafely(file, mergedIni(old, fresh, isDropped), error);
}

/// The settings that write puts down reach the file; else a line in the diagnostic log.
bool stored(const std::function<void(TSettings&)>& write, const QSet<QString>& dropped = {})
{
    QString error;
    if (store(write, dropped, error))
        return true;
    logError(QStringLiteral("Settings"),
             QStringLiteral("%1: cannot be written: %2").arg(settingsFile(), error));
    return false;
}

/// Tells of lines that cannot be read as they stand. They stay in the file.
void logBrokenLines(const QString& file)
{
    constexpr int most = 10;
    QByteArray text;
    QString error;
    if (!QFileInfo::exists(file))
        return;
    const bool isRead = readWholeFile(file, text, error);
    QStringList numbers;
    for (const int number : brokenIniLines(text, most))
        numbers.append(QString::number(number));
    if (!isRead)
        logError(QStringLiteral("Settings"), QStringLiteral("%1: %2").arg(file, error));
    else if (!numbers.isEmpty())
        logError(QStringLiteral("Settings"), QStringLiteral("%1: cannot be read as it stands: line %2%3")
                                                 .arg(file, numbers.join(QStringLiteral(", ")),
                                                      QLatin1String(numbers.size() == most ? "..." : "")));
}

/// The rows of a list. Those that are none are told of: a programmer that is missing has a reason then.
QList<QStringList> toldRows(const TSettings& settings, const QString& group, const QString& key, int length)
{
    const Rows rows = readRows(settings, group, key, length);
    for (const int number : rows.otherNumbers) {
        logError(QStringLiteral("Settings"),
                 QStringLiteral("%1: not %2 parts: %3/%4%5")
                     .arg(settingsFile(), QString::number(length), group, key, QString::number(number)));
    }
    return rows.good.values();
}

} // namespace

void TAppData::load()
{
    const StoredSettings stored;
    const TSettings& settings = stored.get();
    const TAppData defaults;
    for (const char* suffix : {"ini", "hk"})
        logBrokenLines(fileInAppDir(QLatin1String(suffix)));
    for (const SettingsRow& row : settingsRows()) {
        const auto read = [&](auto field) {
            this->*field = readField(settings, QLatin1String(row.key), defaults.*field);
        };
        std::visit(read, row.field);
    }
    progTypes.clear();
    for (const QStringList& row : toldRows(settings, typeGroup, typeKey, 2))
        progTypes.append(row.at(0), row.at(1));
    progNames.clear();
    for (const QStringList& row : toldRows(settings, nameGroup, nameKey, 4))
        progNames.append(row.at(1), row.at(0) == QLatin1String("1"), row.at(2), row.at(3));
}

bool TAppData::saveApp() const
{
    const StoredSettings old;
    const Rows types = readRows(old.get(), typeGroup, typeKey, 2);
    const Rows names = readRows(old.get(), nameGroup, nameKey, 4);
    const auto write = [&](TSettings& settings) {
        writeFields(settings, *this, Written::App);
        writeRows(settings, typeGroup, typeKey, toRows(progTypes), types);
        writeRows(settings, nameGroup, nameKey, toRows(progNames), names);
    };
    return stored(write, types.goodKeys + names.goodKeys);
}

bool TAppData::saveLanguage() const
{
    return stored([this](TSettings& settings) {
        for (const SettingsRow& row : settingsRows()) {
            if (row.field == SettingsRow::Field(&TAppData::Language))
                settings.write(QLatin1String(row.key), Language);
        }
    });
}

bool TAppData::saveWindow() const
{
    return stored([this](TSettings& settings) { writeFields(settings, *this, Written::Window); });
}
