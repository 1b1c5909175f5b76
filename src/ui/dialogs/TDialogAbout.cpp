#include "ui/dialogs/TDialogAbout.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/identity.h"
#include "ui/dialog_parts.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// Whoever hands the program on puts an address of their own here; mail to this one goes nowhere.
constexpr char contact[] = "support@velmarkion.example";

QLabel* heading(const QString& text, int growth, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSize(font.pointSize() + growth);
    font.setBold(growth > 2);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

} // namespace

TDialogAbout::TDialogAbout(QWidget* parent)
    : QDialog(parent)
{
    const QString shortName = QLatin1String(identity::shortName);
    setWindowTitle(shortName);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(heading(shortName, 8, this));
    layout->addWidget(heading(QLatin1String(identity::longName), 1, this));
    layout->addSpacing(10);
    auto* rows = new QFormLayout;
    rows->setContentsMargins(30, 0, 30, 0);
    const QPair<Text, const char*> values[] = {{Text::LabelVersion, identity::version},
                                               {Text::LabelDate, identity::date},
                                               {Text::LabelMail, contact}};
    for (const auto& value : values) {
        auto* label = new QLabel(QLatin1String(value.second), this);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        rows->addRow(langText(value.first), label);
    }
    layout->addLayout(rows);
    QPushButton* close = dialogButton(langText(Text::ButtonClose), this);
    close->setDefault(true);
    addDialogFrame(this, layout)->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}
