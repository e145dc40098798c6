// SPDX-License-Identifier: MIT
#include "desktop/panel/panel_dialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/panel/form_view.h"
#include "desktop/text.h"

namespace desktop {

PanelDialog::PanelDialog(modeler::FormPanel& panel, QWidget* parent)
    : QDialog(parent), form_(new FormView(panel, this)), column_(new QVBoxLayout(this)),
      line_(new QLabel(this))
{
    setObjectName("panel");
    setWindowTitle(to_qt(std::string_view(panel.form().title)));
    line_->setObjectName("told");
    line_->setWordWrap(true);
    line_->setMinimumHeight(2 * fontMetrics().lineSpacing()); // the form keeps still as it changes
    line_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    line_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    column_->addWidget(form_);
    column_->addWidget(line_);
    column_->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(form_, &FormView::told, this, &PanelDialog::tell);
}

void PanelDialog::add_strip(QWidget* strip)
{
    column_->insertWidget(column_->indexOf(line_) + 1, strip);
}

void PanelDialog::tell(const QString& sentence)
{
    line_->setText(sentence);
    QAccessibleEvent event(line_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

QString PanelDialog::told() const { return line_->text(); }

void PanelDialog::accept()
{
    if (!form_->go_to_problem())
        QDialog::accept();
}

} // namespace desktop
