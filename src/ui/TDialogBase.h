#pragma once

#include <QDialog>

/// The settings in which a dialog keeps its place: pointers into TAppData. height may be null for a dialog of
/// fixed height.
struct TWindowKeys
{
    int* left = nullptr;
    int* top = nullptr;
    int* width = nullptr;
    int* height = nullptr;
};

/// A modal dialog that opens where it was left (or centred, as /Main/WindowOtherCenter says) and keeps its
/// place in the settings when it is destroyed.
class TDialogBase : public QDialog
{
    Q_OBJECT

public:
    TDialogBase(const TWindowKeys& keys, QWidget* parent);
    ~TDialogBase() override;

    void setVisible(bool visible) override;

private:
    void place();

    bool m_isPlaced = false;
    const TWindowKeys m_keys;
};
