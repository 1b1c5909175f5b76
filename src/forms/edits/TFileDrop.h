#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Lets a field take a file or folder that is dropped on it. Its line would otherwise write down the address
/// that the file manager hands over. Lives as long as the field.
class TFileDrop : public QObject
{
    Q_OBJECT

public:
    /// take is called with the absolute path, of several files that of the first.
    TFileDrop(QWidget* field, const std::function<void(const QString& path)>& take);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const std::function<void(const QString& path)> m_take;
};
