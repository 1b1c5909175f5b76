#pragma once

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <functional>

/// Reader and writer of one kind of data file. One object serves one run on one thread: built with the
/// run's addresses, opened once, closed once. The destructor closes a file that is still open and throws a
/// new one away that has not been closed.
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

    /// Last address of the range in reading; read may hand out a few bytes behind it.
    virtual qint64 lastWanted() const = 0;
    /// Bytes of the file that read has not handed out, once it has given empty data.
    virtual qint64 leftOut() const = 0;
    /// read has given empty data, and nothing in the file says that there it was meant to end: what the range
    /// has behind it may have been cut off.
    virtual bool mayBeCut() const = 0;
    /// Writes extended addresses as type 04 only, where the format has both. Before open.
    virtual void setLinear(bool) {}
    /// Address records of type 02 were written.
    virtual bool hasSegments() const { return false; }
    /// isAsked is asked again and again while a pipe takes nothing; true gives the write up.
    void setGiveUp(const std::function<bool()>& isAsked) { m_giveUp = isAsked; }
    /// A write was given up that way, and its failure is none.
    bool isGivenUp() const { return m_isGivenUp; }
    /// What is being written is a new file beside the old one, which close puts in its place.
    bool isReplacing() const { return m_out == &m_newFile; }
    /// Reason of the last failure.
    QString errorText() const { return m_errorText; }

protected:
    /// Both store the reason and return false, so that a failing branch is one line.
    bool fail(const QString& reason);
    bool failDevice();
    /// Opens the file, but no pipe: that would wait for its other end without a limit. False with the reason
    /// in reason.
    [[nodiscard]] bool openFile(QIODevice::OpenMode how, QString& reason);
    /// Opens for a new content: a file beside the target or, where there can be none, what the name stands
    /// for. False with the reason in reason.
    [[nodiscard]] bool openNew(QString& reason);
    /// Writes all of the bytes, or stores the reason. For a new file some may still wait in memory.
    [[nodiscard]] bool put(const QByteArray& bytes);
    /// Writes those. To be called before the place in the file is changed.
    [[nodiscard]] bool putBlock();
    /// Ends writing; a new file takes its place.
    bool finish();

    QFile m_file;
    QSaveFile m_newFile;
    QFileDevice* m_out = &m_file; ///< the one of the two that is open

private:
    [[nodiscard]] bool openPipe(QString& reason);
    bool awaitReader();
    [[nodiscard]] bool writeOut(const QByteArray& bytes);

    QByteArray m_block; ///< gathered bytes of a new file
    bool m_isPipe = false;
    std::function<bool()> m_giveUp;
    bool m_isGivenUp = false;
    QString m_errorText;
};
