#pragma once

#include <QObject>

class QWidget;

/// Keeps the keys that copy and select text for a view that only shows some: as hot keys of the window they
/// would act on its commands. Lives as long as the view.
class TTextKeys : public QObject
{
    Q_OBJECT

public:
    explicit TTextKeys(QWidget* view);
    bool eventFilter(QObject* watched, QEvent* event) override;
};
