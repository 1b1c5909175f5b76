#include "ui/window_helpers.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/identity.h"
#include "base/platform.h"
#include "settings/TAppData.h"

#include <QApplication>
#include <QFontInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleFactory>
#include <QTableWidget>

#include <algorithm>

namespace {

void showBox(QMessageBox::Icon icon, const QString& text, QWidget* parent)
{
    QMessageBox box(icon, QLatin1String(identity::shortName), text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

/// One axis: a start outside the screen becomes 0, and so does that of a length that does not fit.
void fitAxis(int& start, int& length, int available)
{
    if (start < 0 || start >= available)
        start = 0;
    if (length > available) {
        length = available;
        start = 0;
    }
}

/// A place held inside a screen.
QRect fitted(const QRect& screen, const QRect& place)
{
    int left = place.left() - screen.left();
    int top = place.top() - screen.top();
    int width = place.width();
    int height = place.height();
    fitAxis(left, width, screen.width());
    fitAxis(top, height, screen.height());
    return QRect(screen.left() + left, screen.top() + top, width, height);
}

/// The first one is the primary screen.
QList<QRect> screenPlaces()
{
    QList<QRect> places;
    for (const QScreen* screen : QGuiApplication::screens())
        places.append(screen->geometry());
    return places;
}

/// A place as the settings tell it, which may be anything.
QRect placeOf(int left, int top, int width, int height)
{
    constexpr int most = 1000000; // of any desktop, so that sums of it stay numbers
    return QRect(qBound(-most, left, most), qBound(-most, top, most), qBound(1, width, most),
                 qBound(1, height, most));
}

/// Centred on area, but with the corner that is needed to move the window still on the screen.
QRect centred(QRect place, const QRect& area, const QRect& screen)
{
    place.moveCenter(area.center());
    place.moveTopLeft({qMax(place.left(), screen.left()), qMax(place.top(), screen.top())});
    return place;
}

QFont configuredFont()
{
    QFont font = QApplication::font();
    if (!appData().FontAppName.isEmpty())
        font.setFamily(appData().FontAppName);
    // A size from a hand-edited file; a font takes none below 1.
    if (appData().FontAppSize > 0)
        font.setPointSize(appData().FontAppSize);
    return font;
}

} // namespace

void msgInfo(const QString& text, QWidget* parent)
{
    showBox(QMessageBox::Information, text, parent);
}

void msgError(const QString& text, QWidget* parent)
{
    showBox(QMessageBox::Critical, text, parent);
}

bool msgAsk(const QString& text, QWidget* parent)
{
    QMessageBox box(QMessageBox::Question, QLatin1String(identity::shortName), text, QMessageBox::NoButton,
                    parent);
    box.setTextFormat(Qt::PlainText);
    QPushButton* yes = box.addButton(langText(Text::ButtonYes), QMessageBox::YesRole);
    box.setEscapeButton(box.addButton(langText(Text::ButtonNo), QMessageBox::NoRole));
    box.setDefaultButton(yes);
    box.exec();
    return box.clickedButton() == yes;
}

int msgChoose(const QString& text, const std::array<Text, 3>& buttons, int defaultButton, QWidget* parent)
{
    static constexpr std::array<QMessageBox::ButtonRole, 3> roles{
        QMessageBox::AcceptRole, QMessageBox::DestructiveRole, QMessageBox::RejectRole};
    QMessageBox box(QMessageBox::Question, QLatin1String(identity::shortName), text, QMessageBox::NoButton,
                    parent);
    box.setTextFormat(Qt::PlainText);
    std::array<QPushButton*, 3> pressable{};
    for (size_t i = 0; i < buttons.size(); ++i)
        pressable.at(i) = box.addButton(langText(buttons.at(i)), roles.at(i));
    box.setDefaultButton(pressable.at(static_cast<size_t>(defaultButton)));
    box.setEscapeButton(pressable.back());
    box.exec();
    const auto pressed = std::find(pressable.begin(), pressable.end(), box.clickedButton());
    return static_cast<int>(std::min<std::ptrdiff_t>(pressed - pressable.begin(), 2));
}

bool openFolder(const QString& file)
{
    return platform::showFolder(absDir(file));
}

int screenOf(const QRect& place, const QList<QRect>& screens)
{
    int best = 0;
    qint64 most = 0;
    for (int i = 0; i < screens.size(); ++i) {
        const QRect part = screens.at(i) & place;
        const qint64 area = part.isEmpty() ? 0 : qint64(part.width()) * part.height();
        if (area > most) {
            most = area;
            best = i;
        }
    }
    return best;
}

QScreen* screenOf(const QRect& place)
{
    return QGuiApplication::screens().at(screenOf(place, screenPlaces()));
}

QRect heldOnScreen(const QRect& place, const QList<QRect>& screens)
{
    return fitted(screens.at(screenOf(place, screens)), place);
}

void placeOnScreen(QWidget* widget, bool centre, int left, int top, int width, int height)
{
    const QRect wanted = placeOf(left, top, width, height);
    const QList<QRect> screens = screenPlaces();
    widget->setGeometry(centre ? centred(fitted(screens.first(), wanted), screens.first(), screens.first())
                               : heldOnScreen(wanted, screens));
}

void placeOnWindow(QWidget* widget, bool centre, int left, int top, int width, int height)
{
    const QWidget* window = QApplication::activeWindow();
    if (!centre || !window) {
        placeOnScreen(widget, centre, left, top, width, height);
        return;
    }
    const QRect screen = window->screen()->geometry();
    const QRect place = fitted(screen, placeOf(left, top, width, height));
    widget->setGeometry(centred(place, window->frameGeometry(), screen));
}

void setStyle(const QString& name)
{
    if (QStyle* style = QStyleFactory::create(name))
        QApplication::setStyle(style);
}

void applyStyleSettings()
{
    const QStringList known = QStyleFactory::keys();
    if (!known.contains(appData().Style) && !known.isEmpty())
        appData().Style = known.first();
    setStyle(appData().Style);
}

void applyFontSettings()
{
    const QFont font = configuredFont();
    QApplication::setFont(font);
    // The font itself knows no point size when it was given in pixels.
    const QFontInfo info(font);
    if (appData().FontMonoName.isEmpty())
        appData().FontMonoName = font.family();
    if (appData().FontMonoSize == 0)
        appData().FontMonoSize = info.pointSize();
}

QString wildcardPattern(const QString& text)
{
    QString pattern = QRegularExpression::escape(text);
    pattern.replace(QLatin1String("\\*"), QLatin1String(".*"));
    pattern.replace(QLatin1String("\\?"), QLatin1String("."));
    return pattern;
}

void moveTableRow(QTableWidget* table, int delta)
{
    const int from = table->currentRow();
    const qint64 to = static_cast<qint64>(from) + delta;
    if (from < 0 || to < 0 || to >= table->rowCount())
        return;
    const QSignalBlocker blocker(table);
    const int target = static_cast<int>(to);
    for (int column = 0; column < table->columnCount(); ++column) {
        QTableWidgetItem* moved = table->takeItem(from, column);
        table->setItem(from, column, table->takeItem(target, column));
        table->setItem(target, column, moved);
    }
    table->setCurrentCell(target, table->currentColumn());
}
