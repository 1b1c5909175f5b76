#include "forms/edits/colors.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QPalette>
#include <QTreeView>
#include <QWidget>

namespace {

void setRole(QWidget* widget, QPalette::ColorRole role, const QColor& colour)
{
    QPalette palette = widget->palette();
    palette.setColor(role, colour); // all colour groups
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

} // namespace

void setTextColor(QWidget* widget, const QColor& colour)
{
    setRole(widget, QPalette::WindowText, colour);
}

void setBaseColor(QWidget* widget, const QColor& colour)
{
    setRole(widget, QPalette::Base, colour);
}

void markFault(QWidget* field, bool fault)
{
    QPalette palette; // without a role set it is the one of the style
    if (fault) {
        const QColor colour(255, 200, 200);
        palette.setColor(QPalette::Base, colour);
        palette.setColor(QPalette::Button, colour);
        // A dark style writes in a light colour.
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::ButtonText, Qt::black);
    }
    field->setPalette(palette);
}

void markInactive(QAbstractItemView* view)
{
    view->setStyleSheet(qobject_cast<QTreeView*>(view)
                            ? QStringLiteral("QTreeView:item:selected:!active { background: #A0A0A0; }")
                            : QStringLiteral("QTableWidget:item:selected:!active { background: #A0A0A0; }"));
    QPalette palette; // all other roles go on following the desktop
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::black);
    view->setPalette(palette);
}

bool isDark(const QColor& back)
{
    return qGray(back.rgb()) < 128;
}

QColor faultText(const QColor& back)
{
    return isDark(back) ? QColor(255, 115, 115) : QColor(Qt::red);
}

QColor goodText(const QColor& back)
{
    return isDark(back) ? QColor(100, 210, 110) : QColor(Qt::darkGreen);
}

QColor readableOn(const QColor& back, const QColor& usual)
{
    constexpr int leastDifference = 90; // of gray levels, 0 to 255
    if (qAbs(qGray(back.rgb()) - qGray(usual.rgb())) >= leastDifference)
        return usual;
    return isDark(back) ? Qt::white : Qt::black;
}

void setDanger(QWidget* widget)
{
    setTextColor(widget, QColor(160, 0, 0));
    // The dark red is lost on a dark style.
    if (isDark(widget->palette().color(QPalette::Window))) {
        setRole(widget, QPalette::Window, QColor(255, 225, 225));
        widget->setBackgroundRole(QPalette::Window);
    }
    QFont font = widget->font();
    font.setBold(true);
    widget->setFont(font);
}

QLabel* warningLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    setDanger(label);
    label->hide();
    return label;
}

void showWarning(QLabel* label, const QStringList& lines)
{
    label->setText(lines.join(QLatin1Char('\n')));
    label->setVisible(!lines.isEmpty());
}

QString literalLabel(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}
