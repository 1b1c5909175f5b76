#pragma once

#include <QObject>
#include <QRecursiveMutex>
#include <QStringList>
#include <QVector>

class TSettings;

/// Description of a programmer model, from its cfg file. Fixed values are read at construction; the
/// others follow the file at each request. Shared by all threads.
class TProg : public QObject
{
    Q_OBJECT

public:
    /// Reads the fixed values of the file; keys that are missing give the defaults.
    explicit TProg(const QString& file);
    ~TProg() override;

    QString file() const;
    int interfaceId() const;
    /// dataBits and stopBits are the indexes that TSerialPort takes; timeout in ms.
    void portParams(int& baudRate, int& dataBits, QString& parity, int& stopBits, QString& flowControl,
                    int& timeout) const;
    /// Longest silence of the programmer, ms.
    int timeout() const;
    /// Most bytes of chip data in a frame.
    void maxData(quint16& bytes) const;

    /// Letters of the pin states that the model offers, "-" first.
    QString pinLetters() const;
    /// Their texts, in the same order.
    QStringList pinTexts() const;
    /// The letter's byte on the wire; 0 for any other letter.
    static quint8 pinCode(QChar letter);

    /// Hz and percent.
    void freqDefaults(int& freq, int& duty) const;
    /// Milliseconds, not negative.
    void resetLimits(int& min, int& max) const;
    /// Milliseconds; the sign is the polarity of the pulse.
    int resetDefault() const;

    // Volts.
    void vccLimits(double& min, double& max) const;
    double vccDefault() const;
    void vppLimits(double& min, double& max) const;
    double vppDefault() const;
    // Milliamperes.
    void iccLimits(double& min, double& max) const;
    double iccDefault() const;
    void ippLimits(double& min, double& max) const;
    double ippDefault() const;

    /// The group Frequency: Hz and percent, value lists ascending.
    void freqParams(bool& fqList, int& fqMin, int& fqMax, QVector<int>& fqValues, bool& dtShow, bool& dtList,
                    int& dtMin, int& dtMax, QVector<int>& dtValues) const;
    /// Clock limits of a chip section, Hz; values ascending.
    void clockParams(const QString& section, bool& isList, int& min, int& max, QVector<int>& values) const;
    int clockDefault(const QString& section) const;
    /// What stands on the wire for a clock.
    int clockCode(const QString& section, int clock) const;
    /// The model offers the command with this key word.
    bool supportsCommand(const QString& key) const;
    /// Pins in wire order; filtered for everything that goes to the programmer.
    QStringList pinList(const QString& section, bool filtered) const;

private:
    void readPinTypes(const TSettings& ini);
    void limits(const QString& group, double& min, double& max) const;
    double groupDefault(const QString& group) const;

    mutable QRecursiveMutex m_mutex;
    QString m_file;
    int m_interfaceId = 0;
    int m_baudRate = 0;
    int m_dataBits = 0;
    QString m_parity;
    int m_stopBits = 0;
    QString m_flowControl;
    int m_timeout = 0;
    quint16 m_maxData = 0;
    QString m_pinLetters;
    QStringList m_pinTexts;
    int m_freqDefault = 0;
    int m_dutyDefault = 0;
    int m_resetMin = 0;
    int m_resetMax = 0;
    int m_resetDefault = 0;
};
