#pragma once

#include <QProxyStyle>

/// The style of the command tables. A table keeps its base colour behind the cells while it is painted
/// by a style sheet, and its check marks have the colours of the desktop, whatever those of their rows.
class TStyleCmdList : public QProxyStyle
{
    Q_OBJECT

public:
    /// Paints over the style of that name.
    explicit TStyleCmdList(const QString& name);

    /// The one that goes with the style of the settings, shared by all tables. It lives as long as the
    /// application, because a table does not take its style over.
    static TStyleCmdList* shared();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
};
