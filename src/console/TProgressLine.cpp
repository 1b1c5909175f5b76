#include "console/TProgressLine.h"

#include "console/print.h"

#include <QStringList>

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int barWidth = 20;

void write(const QByteArray& bytes)
{
    fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    fflush(stderr);
}

int terminalColumns()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

} // namespace

TProgressLine::TProgressLine()
    : m_isTerminal(isatty(STDERR_FILENO) == 1)
{
}

void TProgressLine::set(const QString& name, int percent)
{
    if (percent <= 0)
        m_percents.remove(name);
    else
        m_percents[name] = qMin(percent, 100);
    if (m_percents.isEmpty())
        clear();
    draw();
}

void TProgressLine::clear()
{
    if (m_isDrawn)
        write("\r\x1B[K");
    m_isDrawn = false;
}

void TProgressLine::draw()
{
    if (!m_isTerminal || m_percents.isEmpty())
        return;
    // The last column stays free: some terminals go to the next line there.
    write('\r' + text(m_percents, terminalColumns() - 1).toUtf8() + "\x1B[K");
    m_isDrawn = true;
}

QString TProgressLine::text(const QMap<QString, int>& percents, int columns)
{
    QStringList bars;
    for (auto it = percents.begin(); it != percents.end(); ++it) {
        const QString done(it.value() * barWidth / 100, QLatin1Char('#'));
        bars.append(QStringLiteral("%1 [%2] %3 %")
                        .arg(printable(it.key()), done.leftJustified(barWidth, QLatin1Char('.')),
                             QString::number(it.value())));
    }
    return bars.join(QStringLiteral("  ")).left(columns);
}
