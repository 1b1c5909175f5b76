#include "ui/panels/TStyleCmdList.h"

#include "settings/TAppData.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionViewItem>

TStyleCmdList::TStyleCmdList(const QString& name)
    : QProxyStyle(name)
{
}

TStyleCmdList* TStyleCmdList::shared()
{
    const QString name = appData().Style;
    if (auto* style = qApp->findChild<TStyleCmdList*>(name, Qt::FindDirectChildrenOnly))
        return style;
    auto* style = new TStyleCmdList(name);
    style->setParent(qApp);
    style->setObjectName(name);
    return style;
}

void TStyleCmdList::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const
{
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    if (element == PE_IndicatorItemViewItemCheck && item && widget) {
        // The row gives the mark the colour of its text, which cannot be told from the box of a dark desktop.
        QStyleOptionViewItem box = *item;
        box.palette = widget->palette();
        QProxyStyle::drawPrimitive(element, &box, painter, widget);
        return;
    }
    if (element == PE_PanelItemViewItem && item) {
        painter->setBrush(option->palette.base());
        painter->setBackground(Qt::green);
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}
