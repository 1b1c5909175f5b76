#include "ui/dialogs/TDialogManual.h"

#include "base/TLang.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

#include <QEvent>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

/// Heads of tables, marked words and remarks stand out from the page a little.
QString pageStyle(bool isDark)
{
    const auto* const colors = isDark ? "#9fc0f0 #2c3442 #33383f #4a3a20" : "#203860 #eef1f7 #ececec #fdf3e0";
    const QStringList parts = QString::fromLatin1(colors).split(QLatin1Char(' '));
    return QStringLiteral("h1, h2 { color: %1; } th { background: %2; text-align: left; } "
                          "th, td { padding: 1px 5px; } code, kbd { background: %3; } "
                          ".note { background: %4; }")
        .arg(parts.at(0), parts.at(1), parts.at(2), parts.at(3));
}

} // namespace

TDialogManual::TDialogManual(QWidget* parent)
    : TDialogBase({&appData().WindowManualLeft, &appData().WindowManualTop, &appData().WindowManualWidth,
                   &appData().WindowManualHeight},
                  parent)
    , m_page(new QTextBrowser(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(plainTitle(Text::ActionHelp));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_page);
    QPushButton* close = dialogButton(langText(Text::ButtonClose), this);
    close->setAutoDefault(false);
    addDialogFrame(this, layout)->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

bool TDialogManual::load(const QString& file)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly))
        return false;
    static const QRegularExpression style(QStringLiteral("<style>.*</style>"),
                                          QRegularExpression::DotMatchesEverythingOption);
    m_html = QString::fromUtf8(device.readAll()).remove(style);
    showPage();
    return true;
}

void TDialogManual::showPage()
{
    const int place = m_page->verticalScrollBar()->value();
    m_page->document()->setDefaultStyleSheet(pageStyle(isDark(palette().color(QPalette::Base))));
    m_page->setHtml(m_html);
    m_page->verticalScrollBar()->setValue(place);
}

void TDialogManual::changeEvent(QEvent* event)
{
    TDialogBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showPage();
}
