// SPDX-License-Identifier: MIT
#include "desktop/panel/panel_dialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "desktop/panel/form_view.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// A scroll area whose size hint is the size of its content and whose minimum size is small.
class FormScroll : public QScrollArea {
public:
    FormScroll(QWidget* content, QWidget* parent) : QScrollArea(parent)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setWidget(content);
        setFocusPolicy(Qt::NoFocus); // the keyboard goes to the controls, and the form follows it
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0);
    }

    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {fontMetrics().averageCharWidth() * 16, fontMetrics().lineSpacing() * 3};
    }
};

/// Whether a key is used for editing in a form, so that it must not trigger a window shortcut.
bool belongs_to_form(const QKeyEvent& event)
{
    const bool with_modifier =
        (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    return !with_modifier && (event.key() < Qt::Key_F1 || event.key() > Qt::Key_F35);
}

} // namespace

PanelDialog::PanelDialog(modeler::FormPanel& panel, QWidget* parent)
    : QDialog(parent), content_(new QWidget(this)), form_(new FormView(panel, content_)),
      column_(new QVBoxLayout(this)), line_(new QLabel(this))
{
    setObjectName("panel");
    setWindowTitle(without_placeholder(printable(panel.form().title)));
    line_->setObjectName("message");
    line_->setTextFormat(Qt::PlainText); // the module's words are shown in it
    line_->setWordWrap(true);
    line_->hide(); // takes no room from the form while there is nothing to tell
    line_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    line_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* const cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setText(tr("Cancel")); // its usual key, Alt+C, is that of a menu
    QPushButton* const ok = buttons->button(QDialogButtonBox::Ok);
    ok->setToolTip(tr("Run with these values (Enter; Ctrl+Enter also while a field is typed in)"));
    ok->setAutoDefault(true);
    ok->setDefault(true);
    auto* const rows = new QVBoxLayout(content_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(form_);
    rows->addStretch(1);
    column_->addWidget(new FormScroll(content_, this), 1);
    column_->addWidget(line_);
    column_->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(form_, &FormView::notified, this, &PanelDialog::show_message);
}

void PanelDialog::add_strip(QWidget* strip)
{
    strip_ = strip;
    content_->layout()->addWidget(strip);
}

/// Puts the strip outside the scroll area if it fits, otherwise into it.
void PanelDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    if (strip_ == nullptr)
        return;
    constexpr int lines_to_work_in = 30;
    const QMargins margins = column_->contentsMargins();
    const bool room =
        height() >= lines_to_work_in * fontMetrics().lineSpacing() &&
        width() >= strip_->minimumSizeHint().width() + margins.left() + margins.right();
    const bool in_sight = !content_->isAncestorOf(strip_);
    if (room && !in_sight)
        column_->insertWidget(column_->indexOf(line_) + 1, strip_);
    else if (!room && in_sight)
        content_->layout()->addWidget(strip_);
}

void PanelDialog::show_message(const QString& sentence)
{
    line_->setText(sentence);
    line_->setVisible(!sentence.isEmpty());
    QAccessibleEvent event(line_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

/// In a dock, shortcuts of the window's menus are active as well: they must not take keys of a list
/// or check box, such as Home or a letter that searches an entry.
bool PanelDialog::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        belongs_to_form(*static_cast<QKeyEvent*>(event))) { // NOLINT(*-static-cast-downcast)
        event->accept();
        return true;
    }
    return QDialog::event(event);
}

void PanelDialog::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && (event->modifiers() & Qt::ControlModifier) != 0)
        accept();
    else
        QDialog::keyPressEvent(event);
}

QString PanelDialog::message() const { return line_->text(); }

void PanelDialog::accept()
{
    if (form_->go_to_problem())
        return;
    const QString problem = check_ ? check_() : QString();
    if (problem.isEmpty())
        QDialog::accept();
    else
        show_message(problem);
}

} // namespace desktop
