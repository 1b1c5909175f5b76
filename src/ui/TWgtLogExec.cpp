#include "ui/TWgtLogExec.h"

#include "core/TAppData.h"
#include "core/globals.h"
#include "exec/TLogText.h"
#include "forms/TTextKeys.h"
#include "forms/mono_font.h"

#include <QProgressBar>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int barHeight = 15;
/// What stays of a full log. Much goes at once, for what is behind it is laid out anew each time.
constexpr int keptLines = TWgtLogExec::maxLines / 5 * 4;

} // namespace

TWgtLogExec::TWgtLogExec(QWidget* parent)
    : QWidget(parent)
    , m_edit(new QTextEdit(this))
    , m_bar(new QProgressBar(this))
{
    m_edit->setReadOnly(true);
    new TTextKeys(m_edit);
    m_edit->setUndoRedoEnabled(false);
    m_edit->setLineWrapMode(QTextEdit::NoWrap);
    m_edit->setFont(monoFont());
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    m_bar->setFixedHeight(barHeight);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_edit);
    layout->addWidget(m_bar);
    reloadColors();
    lock(false);
}

TWgtLogExec::~TWgtLogExec() = default;

void TWgtLogExec::reloadColors()
{
    const TAppData& settings = appData();
    m_colors = {settings.ExecLogColorTime,    settings.ExecLogColorCmd,   settings.ExecLogColorParam,
                settings.ExecLogColorText,    settings.ExecLogColorWork,  settings.ExecLogColorResult,
                settings.ExecLogColorSuccess, settings.ExecLogColorFailed};
    QPalette palette = m_edit->palette();
    palette.setColor(QPalette::Base, settings.ExecLogColorBackground);
    m_edit->setPalette(palette);
}

void TWgtLogExec::addEvent(TCodeExec code, const QString& text1, const QString& text2)
{
    const QList<TLogText::Piece> pieces = TLogText::paragraph(code, text1, text2, QTime::currentTime());
    if (pieces.isEmpty())
        return;
    if (code == ceCmdBegin)
        setPercent(0);
    QTextCursor cursor(m_edit->document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!m_edit->document()->isEmpty() || m_hasLine)
        cursor.insertBlock();
    m_hasLine = true;
    QTextCharFormat format;
    for (const TLogText::Piece& piece : pieces) {
        format.setForeground(m_colors.at(static_cast<int>(piece.color)));
        cursor.insertText(piece.text, format);
    }
    cursor.endEditBlock();
    dropOldLines();
    showEnd();
}

void TWgtLogExec::dropOldLines()
{
    const QTextDocument* document = m_edit->document();
    if (document->blockCount() <= maxLines)
        return;
    QTextCursor cursor(m_edit->document());
    const QTextBlock kept = document->findBlockByNumber(document->blockCount() - keptLines);
    cursor.setPosition(kept.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void TWgtLogExec::setPercent(int percent)
{
    m_bar->setValue(qBound(m_bar->minimum(), percent, m_bar->maximum()));
}

void TWgtLogExec::clear()
{
    m_edit->clear();
    m_hasLine = false;
    setPercent(0);
}

void TWgtLogExec::lock(bool on)
{
    m_edit->setTextInteractionFlags(on ? Qt::NoTextInteraction : Qt::TextSelectableByMouse);
    if (!on)
        return;
    // The text moves up and down only: the cursor would take it along to the end of a long line.
    const int left = m_edit->horizontalScrollBar()->value();
    m_edit->moveCursor(QTextCursor::End);
    m_edit->horizontalScrollBar()->setValue(left);
    showEnd();
}

void TWgtLogExec::showEnd()
{
    QScrollBar* bar = m_edit->verticalScrollBar();
    bar->setValue(bar->maximum());
}
