#include "ui/panels/TWgtLogExec.h"

#include "exec/TLogText.h"
#include "forms/edits/TTextKeys.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"
#include "forms/edits/mono_font.h"
#include "settings/TAppData.h"
#include "ui/setting_colors.h"

#include <QEvent>
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
/// Of a piece of text: its TLogText::Color.
constexpr int colorProperty = QTextFormat::UserProperty;

/// By TLogText::Color.
constexpr QColor TAppData::*colorSettings[] = {
    &TAppData::ExecLogColorTime,    &TAppData::ExecLogColorCmd,    &TAppData::ExecLogColorParam,
    &TAppData::ExecLogColorText,    &TAppData::ExecLogColorWork,   &TAppData::ExecLogColorResult,
    &TAppData::ExecLogColorSuccess, &TAppData::ExecLogColorFailed, &TAppData::ExecLogColorStopped};

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
    m_bar->setFixedHeight(lineHeight(m_bar, barHeight, 0));

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
    const QColor back = logBackground(palette().color(QPalette::Base));
    const QVector<QColor> before = m_colors;
    m_colors.clear();
    for (const auto setting : colorSettings)
        m_colors.append(shownColor(setting, back));
    QPalette colors; // all other roles go on following the desktop
    colors.setColor(QPalette::Base, back);
    m_edit->setPalette(colors);
    if (m_colors == before)
        return;
    recolor();
    showBarColor();
}

void TWgtLogExec::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        reloadColors();
}

void TWgtLogExec::recolor()
{
    struct Piece
    {
        int start;
        int length;
        int color;
    };
    // Collected first, because a new format joins and splits the pieces.
    QVector<Piece> pieces;
    for (QTextBlock block = m_edit->document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            pieces.append(
                {fragment.position(), fragment.length(), fragment.charFormat().intProperty(colorProperty)});
        }
    }
    QTextCursor cursor(m_edit->document());
    cursor.beginEditBlock();
    for (const Piece& piece : qAsConst(pieces)) {
        cursor.setPosition(piece.start);
        cursor.setPosition(piece.start + piece.length, QTextCursor::KeepAnchor);
        QTextCharFormat format;
        format.setForeground(m_colors.at(piece.color));
        cursor.mergeCharFormat(format);
    }
    cursor.endEditBlock();
}

void TWgtLogExec::showBarColor()
{
    QPalette colors; // without a role set it is the one of the style
    if (m_isStopped) {
        const QColor stopped = m_colors.at(static_cast<int>(TLogText::Color::Stopped));
        colors.setColor(QPalette::Highlight, stopped);
        colors.setColor(QPalette::HighlightedText, readableOn(stopped, palette().highlightedText().color()));
    }
    m_bar->setPalette(colors);
}

void TWgtLogExec::setStopped(bool on)
{
    if (m_isStopped == on)
        return;
    m_isStopped = on;
    m_bar->setValue(on ? m_reached : 0);
    showBarColor();
}

void TWgtLogExec::addEvent(TCodeExec code, const QString& text1, const QString& text2)
{
    const QList<TLogText::Piece> pieces = TLogText::paragraph(code, text1, text2, QTime::currentTime());
    if (pieces.isEmpty())
        return;
    if (code == ceCmdBegin)
        begin();
    QTextCursor cursor(m_edit->document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    if (!m_edit->document()->isEmpty() || m_hasLine)
        cursor.insertBlock();
    m_hasLine = true;
    QTextCharFormat format;
    for (const TLogText::Piece& piece : pieces) {
        const bool isStopped = m_isStopped && piece.color == TLogText::Color::Success;
        const int color = static_cast<int>(isStopped ? TLogText::Color::Stopped : piece.color);
        format.setProperty(colorProperty, color);
        format.setForeground(m_colors.at(color));
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
    if (percent > 0)
        m_reached = m_bar->value();
}

void TWgtLogExec::begin()
{
    setStopped(false);
    m_reached = 0;
    setPercent(0);
}

void TWgtLogExec::clear()
{
    m_edit->clear();
    m_hasLine = false;
    begin();
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
