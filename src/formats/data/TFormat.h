#pragma once

#include <QLatin1String>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class IFormat;

/// A data file of one command run: raw binary or Intel HEX, read or written in pieces.
/// Built on the stack with the run's addresses, opened once, closed at the end.
class TFormat
{
public:
    /// format is compared with case: "bin", "bin+", else Intel HEX. file is absolute. addrFile is the
    /// address inside the file, addrDevice and addrEnd the first and last device address of the run.
    /// chunk is the largest piece and the alignment of a piece that read hands out, in bytes.
    TFormat(const QString& format, const QString& file, qint64 addrFile, qint64 addrDevice, qint64 addrEnd,
            qint64 chunk);
    virtual ~TFormat();
    TFormat(const TFormat&) = delete;
    TFormat& operator=(const TFormat&) = delete;

    /// 0 opens for reading, 1 for writing.
    [[nodiscard]] bool open(int mode);
    /// addr is an address in the file's own address space.
    [[nodiscard]] bool write(qint64 addr, const QByteArray& data);
    /// addr is the wanted address on entry and that of the first byte of data on return. Success with
    /// empty data is the end of the run.
    [[nodiscard]] bool read(qint64& addr, QByteArray& data);
    /// The file is complete only when this has returned true; a new one takes the place of the old one here,
    /// and without this call not at all.
    [[nodiscard]] bool close();
    QString errorText() const;

    /// Last address that a run of reading wants: the range's end as the device or the file counts it. A
    /// record that begins below it is handed out whole.
    qint64 lastWanted() const;
    /// Bytes of the file that were not handed out, when read has come to the end.
    qint64 leftOut() const;
    /// Nothing in the file says that it was meant to end where it does: a HEX file has a record for that, a
    /// binary one has not. When read has come to the end.
    bool mayBeCut() const;
    /// A HEX file is written with extended addresses of type 04 only. Before open.
    void setLinear(bool linear);
    /// isAsked is asked again and again while a pipe takes nothing; true gives the write up, which then fails
    /// with isGivenUp.
    void setGiveUp(const std::function<bool()>& isAsked);
    bool isGivenUp() const;
    /// A HEX file was written with address records that other programs read differently.
    bool hasSegments() const;
    /// What is written is a new file, not a device, a pipe or a part of the old file.
    bool isReplacing() const;

    /// What there is to know of a format without a file.
    struct Kind
    {
        using Factory = std::unique_ptr<IFormat> (*)(const QString& word, const QString& file,
                                                     qint64 addrFile, qint64 addrDevice, qint64 addrEnd,
                                                     qint64 chunk);

        QLatin1String word;   ///< as the constructor takes it
        QLatin1String name;   ///< as it is shown: the word in upper case
        QLatin1String filter; ///< pattern of the names of its files
        bool hasAddresses; ///< the file tells the addresses of its bytes, so that an offset in it has no use
        qint64 greatestAddr; ///< that an address in the file can be
        Factory make;
    };

    /// All formats in the order of the choice, the default first.
    static const std::vector<Kind>& kinds();
    /// The format that a command names, in any case; null when there is none of this name.
    static const Kind* find(const QString& name);
    /// The patterns of all formats in alphabetical order, with blanks between them.
    static QString fileFilter();
    /// The names of all formats in the order of the choice.
    static QStringList formatList();

private:
    std::unique_ptr<IFormat> m_format;
};
