#include "base/TSettings.h"

#include "base/ini_text.h"
#include "base/qt_versions.h"

#include <QFile>

#include <iterator>

namespace {

constexpr uint rgbMask = 0xFFFFFF;

/// The words for a flag, the first half for false.
constexpr const char* flagWords[] = {"0", "false", "no", "off", "1", "true", "yes", "on"};

} // namespace

TSettings::TSettings(const QString& file)
    : QSettings(file, QSettings::IniFormat)
{
    setUtf8(*this);
}

TSettings::~TSettings() = default;

bool TSettings::readBool(const QString& key, bool def) const
{
    const QString text = value(key).toString().trimmed();
    const auto* const word = std::find_if(std::begin(flagWords), std::end(flagWords), [&text](const char* w) {
        return text.compare(QLatin1String(w), Qt::CaseInsensitive) == 0;
    });
    if (word != std::end(flagWords))
        return word - flagWords >= std::distance(std::begin(flagWords), std::end(flagWords)) / 2;
    bool isNumber = false;
    const bool isSet = text.toLongLong(&isNumber) != 0;
    return isNumber ? isSet : def;
}

int TSettings::readInt(const QString& key, int def) const
{
    bool isNumber = false;
    const int number = value(key).toString().trimmed().toInt(&isNumber);
    return isNumber ? number : def;
}

QString TSettings::readString(const QString& key, const QString& def) const
{
    const QVariant stored = value(key);
    if (!stored.isValid())
        return def;
    const QStringList parts = stored.toStringList();
    return parts.size() > 1 ? joined(key, parts) : stored.toString();
}

/// A text with a comma and without quotes, which the store takes for a list.
QString TSettings::joined(const QString& key, const QStringList& parts) const
{
    QFile file(fileName());
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray raw = rawIniValue(file.readAll(), key.toUtf8());
        // Quotes and escapes have been read already; without them the text is what stands there.
        if (!raw.isEmpty() && !raw.contains('"') && !raw.contains('\\'))
            return QString::fromUtf8(raw);
    }
    return parts.join(QLatin1String(", "));
}

QColor TSettings::readColor(const QString& key, const QColor& def) const
{
    // Wider than an int, so that a number with an alpha part keeps its low bits instead of becoming 0.
    bool isNumber = false;
    const qlonglong number = value(key).toString().trimmed().toLongLong(&isNumber);
    return isNumber ? QColor(static_cast<QRgb>(number & rgbMask)) : def;
}

QList<int> TSettings::readSizes(const QString& key, const QList<int>& def) const
{
    const QStringList texts = readList(key);
    if (texts.size() < 2)
        return def;
    QList<int> sizes;
    bool isNumber = true;
    for (auto text = texts.cbegin(); text != texts.cend() && isNumber; ++text)
        sizes.append(text->toInt(&isNumber));
    return isNumber ? sizes : def;
}

QByteArray TSettings::readBytes(const QString& key) const
{
    return QByteArray::fromHex(readString(key, {}).toLatin1());
}

QStringList TSettings::readList(const QString& key) const
{
    return value(key).toStringList();
}

QKeySequence TSettings::readKeySequence(const QString& key) const
{
    // An unquoted comma in the file makes a list: "Ctrl+," and "Ctrl+K, Ctrl+C" come back as two items.
    const QString text = readList(key).join(QLatin1String(", ")).trimmed();
    return QKeySequence::fromString(text, QKeySequence::PortableText);
}

void TSettings::write(const QString& key, bool value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, int value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, const QString& value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, const QColor& value)
{
    setValue(key, static_cast<int>(value.rgb() & rgbMask));
}

void TSettings::write(const QString& key, const QList<int>& value)
{
    QStringList texts;
    for (int size : value)
        texts.append(QString::number(size));
    setValue(key, texts);
}

void TSettings::write(const QString& key, const QByteArray& value)
{
    setValue(key, QString::fromLatin1(value.toHex()));
}

void TSettings::write(const QString& key, const QStringList& value)
{
    setValue(key, value);
}
