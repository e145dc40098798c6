// SPDX-License-Identifier: MIT
// What the fields of a panel do for a person: arithmetic, steps, tool tips, marks, resets.
#include <bit>
#include <cstdint>
#include <numbers>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include "desktop/panel/arithmetic.h"
#include "desktop/panel/control_slot.h"
#include "desktop/panel/control_text.h"
#include "desktop/panel/form_view.h"
#include "desktop/panel/number_field.h"
#include "desktop/panel/panel_dialog.h"
#include "modeler/module.h"
#include "settings/control_help.h"
#include "settings/values.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ControlSlot;
using desktop::PanelDialog;
using modeler::ControlKind;
using modeler::FormPanel;
using support::control;
using support::editor;

bool same_bits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

double number(const FormPanel& panel, const std::string& label)
{
    return std::get<double>(control(panel, label).value);
}

int whole(const FormPanel& panel, const std::string& label)
{
    return std::get<int>(control(panel, label).value);
}

QString text(QWidget* field) { return qobject_cast<desktop::NumberField*>(field)->text(); }

ControlSlot& slot(PanelDialog& dialog, const FormPanel& panel, const std::string& label)
{
    return *dialog.form().slot_of(control(panel, label).id);
}

void turn_wheel(QWidget* over, int steps)
{
    const QPointF at = over->rect().center();
    QWheelEvent event(at, over->mapToGlobal(at), {}, QPoint(0, 120 * steps), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(over, &event);
}

/// What is said against a text, or empty.
std::string refusal_of(ControlKind kind, std::string_view typed)
{
    try {
        (void)desktop::typed_value(kind, typed);
    } catch (const settings::ValueError& error) {
        return error.what();
    }
    return {};
}

class FieldsTest : public QObject {
    Q_OBJECT

private:
    modeler::RunResult run(support::PanelUser::InPanel in_panel)
    {
        user_.in_panel = std::move(in_panel);
        return session_.run(*module_, "Dastrel", user_);
    }

    support::PanelUser user_;
    modeler::Modeler session_;
    std::unique_ptr<modeler::Module> module_;

private Q_SLOTS:
    void init()
    {
        session_ = support::example_session();
        module_ = std::make_unique<modeler::Module>(modeler::Module::load(DASTREL_MODULE));
    }
    void cleanup() { module_.reset(); }

    void calculates_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("result");
        const auto row = [](const char* typed, double result) {
            QTest::newRow(typed) << QString(typed) << result;
        };
        row("2*75", 150.0);
        row("100/3", 100.0 / 3.0);
        row("1+2", 3.0);
        row("7-10", -3.0);
        row("1+2*3", 7.0);
        row("(1+2)*3", 9.0);
        row("8/4/2", 1.0);
        row("8-4-2", 2.0);
        row("-(3+2)*-2", 10.0);
        row("2--3", 5.0);
        row(" 2 * ( 1 + .5 ) ", 3.0);
        row("1e3*2", 2000.0);
        row("1e-3+1", 1.001);
        row("((((1))))", 1.0);
    }

    void calculates()
    {
        QFETCH(QString, typed);
        QFETCH(double, result);
        QVERIFY(desktop::is_calculation(typed.toStdString()));
        QVERIFY(same_bits(desktop::calculate(typed.toStdString()), result));
    }

    void takes_single_numbers_for_no_calculation()
    {
        for (const char* const single : {"5", "-5", " -5", "+5", "1e-3", "2.5E+7", "", " ", "inf"})
            QVERIFY2(!desktop::is_calculation(single), single);
    }

    void refuses_what_cannot_be_calculated()
    {
        for (const char* const wrong :
             {"2*", "*2", "(2", "2)", "2 3*4", "2**3", "()", "a+b", "inf*2", "nan+1", "1/0*inf",
              "0x10*2", "1..2+3", "+-", "/", "2*75%5"})
            QVERIFY2(!refusal_of(ControlKind::real, wrong).empty(), wrong);
        QVERIFY(refusal_of(ControlKind::real, "2*").find("'2*' cannot be calculated") !=
                std::string::npos);
        QVERIFY(refusal_of(ControlKind::real, "1/0").find("divides by zero") != std::string::npos);
        QVERIFY(refusal_of(ControlKind::real, "1/(2-2)").find("divides by zero") !=
                std::string::npos);
        QVERIFY(refusal_of(ControlKind::real, "1e300*1e300").find("too large") !=
                std::string::npos);
        QVERIFY(refusal_of(ControlKind::real, "2,5*2").find("write 2.5*2") != std::string::npos);
        QVERIFY(refusal_of(ControlKind::integer, "100/3").find("not a whole number") !=
                std::string::npos);
        QVERIFY(refusal_of(ControlKind::integer, "2147483647+1").find("out of range") !=
                std::string::npos);
        QVERIFY(refusal_of(ControlKind::integer, "1e300*2").find("out of range") !=
                std::string::npos);
        const std::string deep = std::string(5000, '(') + "1" + std::string(5000, ')');
        QVERIFY(refusal_of(ControlKind::real, deep).find("too many parentheses") !=
                std::string::npos);
    }

    void calculates_in_the_units_of_the_field()
    {
        const auto value = [](ControlKind kind, std::string_view typed) {
            return std::get<double>(desktop::typed_value(kind, typed));
        };
        QVERIFY(same_bits(value(ControlKind::percent, "100/3"), 100.0 / 3.0 / 100.0));
        QVERIFY(same_bits(value(ControlKind::percent, "2*40%"), 80.0 / 100.0));
        QVERIFY(same_bits(value(ControlKind::angle, "360/8"), 45.0 * std::numbers::pi / 180.0));
        QVERIFY(
            same_bits(value(ControlKind::angle, "360/8\u00B0"), 45.0 * std::numbers::pi / 180.0));
        QVERIFY(same_bits(value(ControlKind::angle, "1/4 rad"), 0.25));
        QVERIFY(same_bits(value(ControlKind::real, "6\u00F73\u00D72\u22121"), 3.0));
        QCOMPARE(std::get<int>(desktop::typed_value(ControlKind::integer, "2*75")), 150);
        QCOMPARE(std::get<int>(desktop::typed_value(ControlKind::integer, "0.1*30")), 3);
    }

    void shows_the_result_when_the_field_is_left()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QWidget* const clones = editor(dialog, panel, "Number of Clones");
            clones->setFocus();
            support::type(clones, "2*75");
            QCOMPARE(text(clones), "2*75");
            QCOMPARE(whole(panel, "Number of Clones"), 150);
            QTest::keyClick(clones, Qt::Key_Tab);
            QCOMPARE(text(clones), "150");
            QWidget* const sizes = editor(dialog, panel, "Size Variations");
            sizes->setFocus();
            support::type(sizes, "100/3");
            QTest::keyClick(sizes, Qt::Key_Tab);
            QCOMPARE(text(sizes), "33.3333");
            QVERIFY(same_bits(number(panel, "Size Variations"), 100.0 / 3.0 / 100.0));
            // What is no calculation stays as it was typed, and what is wrong as well.
            sizes->setFocus();
            support::type(sizes, "12.50");
            QTest::keyClick(sizes, Qt::Key_Tab);
            QCOMPARE(text(sizes), "12.50");
            sizes->setFocus();
            support::type(sizes, "3*");
            QTest::keyClick(sizes, Qt::Key_Tab);
            QCOMPARE(text(sizes), "3*");
            QVERIFY(sizes->font().underline());
        });
    }

    void steps_by_keys_wheel_and_buttons()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QWidget* const clones = editor(dialog, panel, "Number of Clones");
            clones->setFocus();
            QTest::keyClick(clones, Qt::Key_Up);
            QCOMPARE(whole(panel, "Number of Clones"), 31);
            QCOMPARE(text(clones), "31");
            QTest::keyClick(clones, Qt::Key_PageDown);
            QCOMPARE(whole(panel, "Number of Clones"), 21);
            turn_wheel(clones, 1);
            QCOMPARE(whole(panel, "Number of Clones"), 22);
            const QPoint upper_button(clones->width() - 5, clones->height() / 4);
            QTest::mouseClick(clones, Qt::LeftButton, {}, upper_button);
            QCOMPARE(whole(panel, "Number of Clones"), 23);
            QWidget* const sizes = editor(dialog, panel, "Size Variations");
            turn_wheel(sizes, 1); // has not the focus: the form scrolls, the value stays
            QVERIFY(same_bits(number(panel, "Size Variations"), 0.25));
            sizes->setFocus();
            QTest::keyClick(sizes, Qt::Key_Down);
            QVERIFY(same_bits(number(panel, "Size Variations"), 24.0 / 100.0));
            // From 9.9997 degrees to ten, and to eleven.
            QWidget* const heading = editor(dialog, panel, "H Max");
            heading->setFocus();
            QTest::keyClick(heading, Qt::Key_Up);
            QVERIFY(same_bits(number(panel, "H Max"), 10.0 * std::numbers::pi / 180.0));
            QTest::keyClick(heading, Qt::Key_Up);
            QCOMPARE(text(heading), "11");
            auto* const list = qobject_cast<QComboBox*>(editor(dialog, panel, "Density WeightMap"));
            turn_wheel(list, -1);
            QCOMPARE(whole(panel, "Density WeightMap"), 0);
            list->setFocus();
            turn_wheel(list, -1);
            QCOMPARE(whole(panel, "Density WeightMap"), 1);
        });
    }

    void steps_within_what_a_value_can_be()
    {
        using desktop::stepped_value;
        QCOMPARE(std::get<int>(stepped_value(ControlKind::integer, 2147483646, 10)), 2147483647);
        QCOMPARE(std::get<int>(stepped_value(ControlKind::integer, -2147483647, -10)),
                 -2147483647 - 1);
        QVERIFY(same_bits(std::get<double>(stepped_value(ControlKind::real, 0.1, 2)), 0.12));
        QVERIFY(same_bits(std::get<double>(stepped_value(ControlKind::real, 0.125, -1)), 0.12));
        QVERIFY(same_bits(std::get<double>(stepped_value(ControlKind::real, 1e30, 1)), 1e30));
        QVERIFY(same_bits(std::get<double>(stepped_value(ControlKind::percent, 0.29, 1)), 0.3));
    }

    void explains_every_setting()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            for (const settings::Setting& setting : settings::all_settings()) {
                const std::string label(setting.label);
                ControlSlot& place = slot(dialog, panel, label);
                for (const QString& tip : {place.toolTip(), place.label()->toolTip()}) {
                    QVERIFY2(tip.contains(QString::fromStdString(settings::option_name(setting))),
                             label.c_str());
                    QVERIFY2(tip.contains("Default: "), label.c_str());
                }
                QCOMPARE(place.label()->text(), QString::fromStdString(label));
            }
            QVERIFY(slot(dialog, panel, "H Max").toolTip().contains("H: heading"));
            QVERIFY(slot(dialog, panel, "H Max")
                        .toolTip()
                        .contains("9.9997 degrees, which is 10 with pi taken as 3.1415"));
            QVERIFY(slot(dialog, panel, "P Min").toolTip().contains("P: pitch"));
            QVERIFY(slot(dialog, panel, "B Min").toolTip().contains("B: bank"));
            // A rule's message comes first.
            QVERIFY(slot(dialog, panel, "Y").toolTip().startsWith("<p>Size axes are linked"));
        });
    }

    void marks_and_resets_what_is_not_the_default()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            for (const settings::Setting& setting : settings::all_settings()) {
                ControlSlot& place = slot(dialog, panel, std::string(setting.label));
                QVERIFY2(!place.label()->font().bold(), setting.label.data());
                QVERIFY(!place.findChild<QToolButton*>("reset")->isVisibleTo(&place));
            }
            ControlSlot& heading = slot(dialog, panel, "H Max");
            QWidget* const field = heading.editor().widget();
            support::type(field, "45");
            QVERIFY(heading.label()->font().bold());
            QCOMPARE(field->accessibleDescription(), "changed; the default is about 9.999705");
            auto* const button = heading.findChild<QToolButton*>("reset");
            QVERIFY(button->isVisibleTo(&heading));
            QTest::mouseClick(button, Qt::LeftButton);
            QVERIFY(same_bits(number(panel, "H Max"), 0.17452777777777778));
            QCOMPARE(text(field), "9.9997");
            QVERIFY(!heading.label()->font().bold());
            QVERIFY(!button->isVisibleTo(&heading));
            QCOMPARE(field->accessibleDescription(), "");
            // By the menu of the field, and out of a text that is wrong.
            support::type(field, "many");
            QVERIFY(field->accessibleDescription().contains("'many' is not a number"));
            QCOMPARE(field->actions().size(), 1);
            field->actions().front()->trigger();
            QCOMPARE(text(field), "9.9997");
            QCOMPARE(dialog.message(), "");
            // A switch and a list.
            ControlSlot& align = slot(dialog, panel, "H Align with normals");
            QTest::keyClick(align.editor().widget(), Qt::Key_Space);
            QVERIFY(align.label()->font().bold());
            align.editor().widget()->actions().front()->trigger();
            QCOMPARE(whole(panel, "H Align with normals"), 1);
            ControlSlot& density = slot(dialog, panel, "Density WeightMap");
            QTest::keyClick(density.editor().widget(), Qt::Key_Down);
            QVERIFY(density.label()->font().bold());
            density.editor().widget()->actions().front()->trigger();
            QCOMPARE(whole(panel, "Density WeightMap"), 0);
        });
    }

    void leaves_controls_alone_of_which_nothing_is_known()
    {
        modeler::Form form;
        form.title = "Another module";
        form.controls = {{1, "Wobble", ControlKind::real, 0.5, {}, false, {}},
                         {2, "Distribution", ControlKind::integer, 7, {}, false, {}},
                         {3, "<b>Density WeightMap</b>", ControlKind::popup, 0, {"a"}, false, {}},
                         {4, "Density WeightMap", ControlKind::popup, 0, {}, false, {}}};
        FormPanel panel(form);
        PanelDialog dialog(panel, nullptr);
        dialog.show();
        for (const modeler::Control& one : form.controls) {
            ControlSlot& place = *dialog.form().slot_of(one.id);
            QVERIFY(place.editor().widget()->actions().isEmpty());
            QVERIFY(place.findChild<QToolButton*>("reset") == nullptr);
            QCOMPARE(place.label()->textFormat(), Qt::PlainText);
        }
        for (const modeler::ControlId id : {1U, 2U, 3U})
            QCOMPARE(dialog.form().slot_of(id)->toolTip(), "");
        QWidget* const wobble = dialog.form().slot_of(1)->editor().widget();
        support::type(wobble, "2*3");
        QTest::keyClick(wobble, Qt::Key_Up);
        QCOMPARE(std::get<double>(panel.find(1)->value), 6.01);
        QVERIFY(!dialog.form().slot_of(1)->label()->font().bold());
    }
};

} // namespace

int main(int count, char** arguments)
{
    FieldsTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "fields_test.moc"
