#pragma once

#include <QDropEvent>
#include <QLibraryInfo>
#include <QMouseEvent>
#include <QProcess>
#include <QSettings>
#include <QTextStream>

#if QT_VERSION_MAJOR < 6
#include <QTextCodec>
#endif

// Where Qt 5.15 and Qt 6 differ, told once. Any thread, but for the first function.

/// Texts of the system are UTF-8, whatever the environment says. Main thread, before others start. Qt 6 knows
/// no other encoding.
inline void makeUtf8Default()
{
#if QT_VERSION_MAJOR < 6
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

/// The file of the stream is UTF-8, with or without a mark at its head.
inline void setUtf8(QTextStream& stream)
{
#if QT_VERSION_MAJOR < 6
    stream.setCodec("UTF-8");
#else
    stream.setEncoding(QStringConverter::Utf8);
#endif
}

/// As above for an INI file.
inline void setUtf8(QSettings& settings)
{
#if QT_VERSION_MAJOR < 6
    settings.setIniCodec("UTF-8");
#else
    Q_UNUSED(settings) // Always so.
#endif
}

/// Where Qt's own translations lie.
inline QString qtTranslationsFolder()
{
#if QT_VERSION_MAJOR < 6
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

/// Where in its widget an event of the mouse or of dragging happened.
template <class Event> QPoint placeOf(const Event& event)
{
#if QT_VERSION_MAJOR < 6
    return event.pos();
#else
    return event.position().toPoint();
#endif
}

/// A process whose child calls inChild between fork and exec, where the system has these: nothing may be
/// called there but what is safe in a signal handler.
class TPreparedProcess : public QProcess
{
public:
    TPreparedProcess(void (*inChild)(), QObject* parent)
        : QProcess(parent)
#if QT_VERSION_MAJOR < 6
        , m_inChild(inChild)
    {
    }

protected:
    void setupChildProcess() override
    {
        m_inChild();
    }

private:
    void (*m_inChild)();
#else
    {
#ifdef Q_OS_UNIX
        setChildProcessModifier(inChild);
#else
        Q_UNUSED(inChild)
#endif
    }
#endif
};
