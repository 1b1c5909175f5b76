#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Reader and writer of one kind of data file. One object serves one run on one thread: built with the
/// run's addresses, opened once, closed once. The destructor closes a file that is still open.
class IFormat
{
public:
    /// Values of the argument of open.
    enum Mode { Read = 0, Write = 1 };

    explicit IFormat(const QString& file);
    virtual ~IFormat();
    IFormat(const IFormat&) = delete;
    IFormat& operator=(const IFormat&) = delete;

    [[nodiscard]] virtual bool open(int mode) = 0;
    /// addr is an address in the file's own address space.
    [[nodiscard]] virtual bool write(qint64 addr, const QByteArray& data) = 0;
    /// addr is the wanted address on entry and that of the first byte of data on return. The end of the
    /// data is success with empty data.
    [[nodiscard]] virtual bool read(qint64& addr, QByteArray& data) = 0;
    [[nodiscard]] virtual bool close() = 0;

    /// Reason of the last failure.
    QString errorText() const { return m_errorText; }

protected:
    /// Both store the reason and return false, so that a failing branch is one line.
    bool fail(const QString& reason);
    bool failDevice();
    /// Opens the file, but no pipe: that would wait for its other end without a limit. False with the reason
    /// in reason.
    bool openFile(QIODevice::OpenMode how, QString& reason);

    QFile m_file;
    QString m_errorText;
};
