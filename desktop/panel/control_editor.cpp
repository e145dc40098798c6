// SPDX-License-Identifier: MIT
#include "desktop/panel/control_editor.h"

#include <utility>

#include <QCheckBox>
#include <QPushButton>
#include <QSignalBlocker>

#include "desktop/panel/number_editor.h"
#include "desktop/panel/popup_list.h"
#include "desktop/text.h"
#include "modeler/errors.h"

namespace desktop {

namespace {

using modeler::Control;
using modeler::ControlId;
using modeler::ControlKind;
using modeler::FormPanel;

int whole(const modeler::ControlValue& value)
{
    const int* const number = std::get_if<int>(&value);
    return number != nullptr ? *number : 0;
}

/// Sets the value on behalf of the user. Returns the panel's error message, or empty.
QString offer(FormPanel& panel, ControlId id, modeler::ControlValue value)
{
    try {
        panel.set(id, value);
        return {};
    } catch (const modeler::PanelRefusal& refusal) {
        return to_qt(std::string_view(refusal.what()));
    }
}

class SwitchEditor : public ControlEditor {
public:
    SwitchEditor(FormPanel& panel, const Control& control, const Edited& edited, QWidget* parent)
        : panel_(panel), id_(control.id), box_(new QCheckBox(parent))
    {
        box_->setContextMenuPolicy(Qt::ActionsContextMenu);
        QObject::connect(box_, &QCheckBox::toggled, box_,
                         [this, edited](bool on) { edited(offer(panel_, id_, on ? 1 : 0)); });
    }

    [[nodiscard]] QWidget* widget() const override { return box_; }

    void refresh(bool /*keep_typed*/) override
    {
        const QSignalBlocker quiet(box_);
        box_->setChecked(whole(panel_.find(id_)->value) != 0);
    }

private:
    FormPanel& panel_;
    ControlId id_;
    QCheckBox* box_;
};

class PopupEditor : public ControlEditor {
public:
    PopupEditor(FormPanel& panel, const Control& control, const Edited& edited, QWidget* parent)
        : panel_(panel), id_(control.id), list_(new PopupList(parent))
    {
        list_->setContextMenuPolicy(Qt::ActionsContextMenu);
        for (const std::string& choice : control.choices)
            list_->addItem(to_qt(std::string_view(choice)));
        QObject::connect(list_, &QComboBox::currentIndexChanged, list_,
                         [this, edited](int index) { edited(offer(panel_, id_, index)); });
    }

    [[nodiscard]] QWidget* widget() const override { return list_; }

    void refresh(bool /*keep_typed*/) override
    {
        // An index out of range (of a map that no longer exists) is shown as no entry and stays
        // unchanged until the user selects an entry.
        const QSignalBlocker quiet(list_);
        const int index = whole(panel_.find(id_)->value);
        list_->setCurrentIndex(index < list_->count() ? index : -1);
    }

private:
    FormPanel& panel_;
    ControlId id_;
    PopupList* list_;
};

class ButtonEditor : public ControlEditor {
public:
    ButtonEditor(FormPanel& panel, const Control& control, const Edited& edited, QWidget* parent)
        : button_(new QPushButton(to_qt(std::string_view(control.label)), parent))
    {
        button_->setAutoDefault(false); // Enter is the panel's OK, on every control
        QObject::connect(button_, &QPushButton::clicked, button_,
                         [&panel, id = control.id, edited] {
                             QString problem;
                             try {
                                 panel.press(id);
                             } catch (const std::exception& error) {
                                 problem = to_qt(std::string_view(error.what()));
                             }
                             edited(problem);
                         });
    }

    [[nodiscard]] QWidget* widget() const override { return button_; }
    void refresh(bool /*keep_typed*/) override {}

private:
    QPushButton* button_;
};

} // namespace

std::unique_ptr<ControlEditor> make_editor(FormPanel& panel, const Control& control,
                                           ControlEditor::Edited edited, QWidget* parent)
{
    std::unique_ptr<ControlEditor> editor;
    switch (control.kind) {
    case ControlKind::boolean:
        editor = std::make_unique<SwitchEditor>(panel, control, edited, parent);
        break;
    case ControlKind::popup:
        editor = std::make_unique<PopupEditor>(panel, control, edited, parent);
        break;
    case ControlKind::button:
        editor = std::make_unique<ButtonEditor>(panel, control, edited, parent);
        break;
    default:
        editor = std::make_unique<NumberEditor>(panel, control, std::move(edited), parent);
        break;
    }
    editor->refresh(false);
    return editor;
}

} // namespace desktop
