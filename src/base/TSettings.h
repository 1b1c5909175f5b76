#pragma once

#include "base/types.h"

#include <QColor>
#include <QKeySequence>
#include <QSettings>

/// An INI file in UTF-8 with typed readers and writers. The one way to open settings, hot keys and
/// programmer descriptions: the text codec must be set before a file is read for the first time in
/// the process.
class TSettings : public QSettings
{
    Q_OBJECT

public:
    explicit TSettings(const QString& file);
    ~TSettings() override;

    // What does not read as its type gives the default.
    /// true, yes, on and numbers but 0; false, no, off and 0; in any case.
    bool readBool(const QString& key, bool def) const;
    int readInt(const QString& key, int def) const;
    /// A text with commas that stands without quotes comes back as it stands.
    QString readString(const QString& key, const QString& def) const;
    /// 24 bits red, green, blue; alpha comes back as 0xFF.
    QColor readColor(const QString& key, const QColor& def) const;
    /// A list of fewer than two numbers gives the default.
    QList<int> readSizes(const QString& key, const QList<int>& def) const;
    QByteArray readBytes(const QString& key) const;
    QStringList readList(const QString& key) const;
    /// A hot key in portable text ("Ctrl+Shift+S", "Ctrl+K, Ctrl+C"); empty without the key.
    QKeySequence readKeySequence(const QString& key) const;

    void write(const QString& key, bool value);
    void write(const QString& key, int value);
    void write(const QString& key, const QString& value);
    /// A plain literal would be taken for a bool.
    void write(const QString& key, const char* value) = delete;
    void write(const QString& key, const QColor& value);
    void write(const QString& key, const QList<int>& value);
    void write(const QString& key, const QByteArray& value);
    void write(const QString& key, const QStringList& value);

private:
    QString joined(const QString& key, const QStringList& parts) const;
};
