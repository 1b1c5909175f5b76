#pragma once

#include <QObject>

class QSocketNotifier;

/// Lines of standard input, read only while they are wanted and without ever blocking: what a user
/// types before a pause waits for it, and other runs go on meanwhile. Main thread.
class TPauseInput : public QObject
{
    Q_OBJECT

public:
    explicit TPauseInput(int descriptor);
    ~TPauseInput() override;

    /// Asks for the next line. It is answered by one of the signals, never from inside the call; asking
    /// again before that changes nothing.
    void want();
    /// Takes the wish back.
    void dropWish();
    /// Nothing more will come.
    bool hasEnded() const { return m_ended; }

signals:
    void signalLine();
    void signalEnded();

private:
    void slotReadable();
    void answer();

    const int m_descriptor;
    QSocketNotifier* m_notifier = nullptr;
    bool m_wanted = false;
    bool m_ended = false;
    bool m_partial = false; ///< characters of a line without its end
    int m_lines = 0;        ///< read but not asked for yet
};
