// SPDX-License-Identifier: MIT
// The module's panel as a person meets it: controls, values, rules, buttons, keyboard.
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "desktop/panel/control_slot.h"
#include "desktop/panel/form_view.h"
#include "desktop/panel/number_field.h"
#include "desktop/panel/panel_dialog.h"
#include "modeler/module.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ControlSlot;
using desktop::PanelDialog;
using modeler::FormPanel;
using support::control;
using support::editor;

/// What stands in a tab, line by line; `---` is a divider.
const QStringList basic{"Number of Clones",
                        "Independent Sizes",
                        "Size Variations",
                        "Y",
                        "Z",
                        "Size WeightMap",
                        "Size WeightMap Influence",
                        "Density WeightMap",
                        "---",
                        "Random rotation H Min",
                        "H Max",
                        "P Min",
                        "P Max",
                        "B Min",
                        "B Max",
                        "Zero Angles",
                        "---",
                        "H Align with normals",
                        "P Align with normals",
                        "---",
                        "Random Seed"};
const QStringList advanced{"Size depends on Poly Area",
                           "Dependence Power",
                           "---",
                           "Jitter Cloned points",
                           "---",
                           "Slope Angle Limits",
                           "Min Slope Angle",
                           "Max Slope Angle",
                           "---",
                           "P angle weightmap",
                           "Absolute",
                           "---",
                           "Distribution",
                           "Iterations",
                           "---",
                           "Auto morph maps"};
const QStringList outside{"About", "Reset Values"};

QStringList lines_of(const QWidget* page)
{
    QStringList lines;
    const auto* const rows = qobject_cast<QFormLayout*>(page->layout());
    for (int i = 0; i < rows->rowCount(); ++i) {
        const QLayoutItem* const label = rows->itemAt(i, QFormLayout::LabelRole);
        const QLayoutItem* const field = rows->itemAt(i, QFormLayout::FieldRole);
        const QLayoutItem* const both = rows->itemAt(i, QFormLayout::SpanningRole);
        if (label != nullptr) {
            const QString text = qobject_cast<QLabel*>(label->widget())->text();
            const auto* const slot = dynamic_cast<ControlSlot*>(field->widget());
            lines.append(slot != nullptr && slot->objectName() == text ? text : "mislabelled");
        } else if (const auto* slot = dynamic_cast<ControlSlot*>(both->widget())) {
            lines.append(slot->findChild<QPushButton*>()->text());
        } else {
            lines.append("---");
        }
    }
    return lines;
}

QString shown(QWidget* widget)
{
    if (const auto* field = qobject_cast<desktop::NumberField*>(widget))
        return field->text();
    if (const auto* box = qobject_cast<QCheckBox*>(widget))
        return box->isChecked() ? "on" : "off";
    if (const auto* list = qobject_cast<QComboBox*>(widget))
        return list->currentText();
    return "?";
}

bool same_bits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

double number(const FormPanel& panel, const std::string& label)
{
    return std::get<double>(control(panel, label).value);
}

class PanelTest : public QObject {
    Q_OBJECT

private:
    /// Opens the panel once more, in the same session of the module.
    modeler::RunResult run(support::PanelUser::InPanel in_panel)
    {
        user_.in_panel = std::move(in_panel);
        return session_.run(*module_, "Dastrel", user_);
    }

    support::PanelUser user_;
    modeler::Modeler session_;
    std::unique_ptr<modeler::Module> module_;

private Q_SLOTS:
    // Every test has a module of its own, with its settings at their defaults.
    void init()
    {
        session_ = support::example_session();
        module_ = std::make_unique<modeler::Module>(modeler::Module::load(DASTREL_MODULE));
        user_.informed.clear();
    }
    void cleanup() { module_.reset(); }

    void shows_every_control_in_its_place()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QCOMPARE(dialog.windowTitle(), "Dastrel 1.6");
            const auto* const tabs = dialog.findChild<QTabWidget*>();
            QCOMPARE(tabs->count(), 2);
            QCOMPARE(tabs->tabText(0), "Basic");
            QCOMPARE(tabs->tabText(1), "Advanced");
            QCOMPARE(tabs->currentIndex(), 0);
            QCOMPARE(lines_of(tabs->widget(0)), basic);
            QCOMPARE(lines_of(tabs->widget(1)), advanced);
            QStringList buttons;
            for (const std::string label : {"About", "Reset Values"}) {
                QWidget* const button = editor(dialog, panel, label);
                QVERIFY(!tabs->isAncestorOf(button));
                buttons.append(qobject_cast<QPushButton*>(button)->text());
            }
            QCOMPARE(buttons, outside);
            QVERIFY(editor(dialog, panel, "About")->mapTo(&dialog, QPoint()).x() <
                    editor(dialog, panel, "Reset Values")->mapTo(&dialog, QPoint()).x());
            QCOMPARE(dialog.findChildren<ControlSlot*>().size(), 31);
        });
    }

    void shows_the_defaults_in_percent_and_degrees()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            const std::vector<std::pair<std::string, QString>> expected{
                {"Number of Clones", "30"},
                {"Independent Sizes", "off"},
                {"Size Variations", "25"},
                {"Y", "25"},
                {"Z", "25"},
                {"Size WeightMap", "none"},
                {"Size WeightMap Influence", "50"},
                {"Density WeightMap", "none"},
                {"Random rotation H Min", "-9.9997"},
                {"H Max", "9.9997"},
                {"P Min", "-9.9997"},
                {"P Max", "9.9997"},
                {"B Min", "-9.9997"},
                {"B Max", "9.9997"},
                {"H Align with normals", "on"},
                {"P Align with normals", "on"},
                {"Random Seed", "25"},
                {"Size depends on Poly Area", "off"},
                {"Dependence Power", "50"},
                {"Jitter Cloned points", "0"},
                {"Slope Angle Limits", "off"},
                {"Min Slope Angle", "0"},
                {"Max Slope Angle", "179.9947"},
                {"P angle weightmap", "none"},
                {"Absolute", "off"},
                {"Distribution", "80"},
                {"Iterations", "15"},
                {"Auto morph maps", "0"}};
            for (const auto& [label, text] : expected)
                QCOMPARE(
                    qMakePair(QString::fromStdString(label), shown(editor(dialog, panel, label))),
                    qMakePair(QString::fromStdString(label), text));
        });
    }

    void tells_screen_readers_names_and_units()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QCOMPARE(editor(dialog, panel, "Number of Clones")->accessibleName(),
                     "Number of Clones");
            QCOMPARE(editor(dialog, panel, "Distribution")->accessibleName(), "Distribution (%)");
            QCOMPARE(editor(dialog, panel, "H Max")->accessibleName(),
                     QString::fromUtf8("H Max (\u00B0)"));
        });
    }

    void gives_back_what_nobody_touched_to_the_last_bit()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            panel.fill(control(panel, "H Max").id, 1.0 / 3.0);
            panel.fill(control(panel, "Distribution").id, std::nextafter(0.8, 1.0));
            dialog.form().refresh();
            QTest::mouseClick(editor(dialog, panel, "H Max"), Qt::LeftButton);
            QTest::keyClick(editor(dialog, panel, "H Max"), Qt::Key_Return);
        });
        run([](PanelDialog& dialog, FormPanel& panel) {
            QVERIFY(same_bits(number(panel, "H Max"), 1.0 / 3.0));
            QVERIFY(same_bits(number(panel, "Distribution"), std::nextafter(0.8, 1.0)));
            QVERIFY(same_bits(number(panel, "Random rotation H Min"), -0.17452777777777778));
            QCOMPARE(shown(editor(dialog, panel, "H Max")), "19.0986");
            // Typed over and put back by hand, it is the same number again.
            QWidget* const field = editor(dialog, panel, "H Max");
            support::type(field, "5");
            QVERIFY(same_bits(number(panel, "H Max"), 5.0 * std::numbers::pi / 180.0));
            support::type(field, "19.0986");
            QVERIFY(same_bits(number(panel, "H Max"), 1.0 / 3.0));
        });
    }

    void takes_typed_values_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("percent") << "Distribution"
                                 << "33.3" << 33.3 / 100.0;
        QTest::newRow("percent sign") << "Distribution"
                                      << "120%" << 1.2;
        QTest::newRow("negative percent") << "Size Variations"
                                          << "-5" << -5.0 / 100.0;
        QTest::newRow("degrees") << "H Max"
                                 << "45" << 45.0 * std::numbers::pi / 180.0;
        QTest::newRow("degree sign")
            << "P Min" << QString::fromUtf8("-90\u00B0") << -90.0 * std::numbers::pi / 180.0;
        QTest::newRow("radians") << "B Max"
                                 << "0.5rad" << 0.5;
        QTest::newRow("plain") << "Jitter Cloned points"
                               << "0.125" << 0.125;
        QTest::newRow("no limits") << "Jitter Cloned points"
                                   << "-1e30" << -1e30;
        QTest::newRow("whole") << "Number of Clones"
                               << "-7" << -7.0;
        QTest::newRow("largest") << "Random Seed"
                                 << "2147483647" << 2147483647.0;
    }

    void takes_typed_values()
    {
        QFETCH(QString, label);
        QFETCH(QString, text);
        QFETCH(double, value);
        run([&](PanelDialog& dialog, FormPanel& panel) {
            support::type(editor(dialog, panel, label.toStdString()), text);
            QCOMPARE(dialog.message(), "");
            QTest::keyClick(&dialog, Qt::Key_Return);
            QVERIFY(!dialog.isVisible());
        });
        run([&](PanelDialog&, FormPanel& panel) {
            const modeler::ControlValue& held = control(panel, label.toStdString()).value;
            if (const int* const whole = std::get_if<int>(&held))
                QCOMPARE(*whole, static_cast<int>(value));
            else
                QVERIFY(same_bits(std::get<double>(held), value));
        });
    }

    void keeps_wrong_text_and_says_what_is_wrong()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QWidget* const field = editor(dialog, panel, "Iterations");
            support::type(field, "a few");
            QVERIFY2(dialog.message().contains("'a few' is not a whole number"),
                     qPrintable(dialog.message()));
            QCOMPARE(std::get<int>(control(panel, "Iterations").value), 15);
            // OK does not go past it, but shows where it is: here on the other tab.
            QTest::keyClick(&dialog, Qt::Key_Return);
            QVERIFY(dialog.isVisible());
            QCOMPARE(dialog.findChild<QTabWidget*>()->currentIndex(), 1);
            QVERIFY(field->hasFocus());
            QCOMPARE(shown(field), "a few");
            QVERIFY(dialog.message().startsWith("Iterations: "));
            support::type(field, "4");
            QCOMPARE(dialog.message(), "");
            support::type(editor(dialog, panel, "Distribution"), "8,5");
            QVERIFY2(dialog.message().contains("write 8.5"), qPrintable(dialog.message()));
        });
    }

    void enables_by_the_rules_data()
    {
        QTest::addColumn<QString>("controller");
        QTest::addColumn<QStringList>("members");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("on");
        QTest::newRow("p align") << "P Align with normals" << QStringList{"P angle weightmap"}
                                 << "P Align should be enabled." << true;
        QTest::newRow("slope") << "Slope Angle Limits"
                               << QStringList{"Max Slope Angle", "Min Slope Angle"}
                               << "Slope Angle is Disabled" << false;
        QTest::newRow("sizes") << "Independent Sizes" << QStringList{"Y", "Z"}
                               << "Size axes are linked" << false;
        QTest::newRow("size map") << "Size WeightMap" << QStringList{"Size WeightMap Influence"}
                                  << "Choose any weightmap first" << false;
        QTest::newRow("area") << "Size depends on Poly Area" << QStringList{"Dependence Power"}
                              << "Control is disabled. Turn 'Size Depends on Poly Area' on first"
                              << false;
    }

    void enables_by_the_rules()
    {
        QFETCH(QString, controller);
        QFETCH(QStringList, members);
        QFETCH(QString, message);
        QFETCH(bool, on);
        run([&](PanelDialog& dialog, FormPanel& panel) {
            QWidget* const switching = editor(dialog, panel, controller.toStdString());
            auto* const tabs = dialog.findChild<QTabWidget*>();
            tabs->setCurrentIndex(tabs->widget(0)->isAncestorOf(switching) ? 0 : 1);
            const auto turn = [&](bool to) {
                if (auto* const list = qobject_cast<QComboBox*>(switching)) {
                    list->setFocus();
                    QTest::keyClick(list, to ? Qt::Key_End : Qt::Key_Home);
                } else if (qobject_cast<QCheckBox*>(switching)->isChecked() != to) {
                    switching->setFocus();
                    QTest::keyClick(switching, Qt::Key_Space);
                }
            };
            for (const bool now : {on, !on, on}) {
                turn(now);
                for (const QString& member : members)
                    QCOMPARE(editor(dialog, panel, member.toStdString())->isEnabled(), now);
            }
            turn(false);
            for (const QString& member : members) {
                QWidget* const widget = editor(dialog, panel, member.toStdString());
                tabs->setCurrentIndex(tabs->widget(0)->isAncestorOf(widget) ? 0 : 1);
                dialog.show_message("");
                QApplication::processEvents(); // the page is laid out
                // Where a hand with a mouse would click: the window finds the greyed widget.
                QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {},
                                  widget->mapTo(&dialog, widget->rect().center()));
                QCOMPARE(dialog.message(), message);
                dialog.show_message("");
                QWidget* const slot =
                    dialog.form().slot_of(control(panel, member.toStdString()).id);
                QCOMPARE(slot->focusPolicy(), Qt::StrongFocus);
                editor(dialog, panel, "About")->setFocus(); // away from where the click went
                slot->setFocus(Qt::TabFocusReason);
                QCOMPARE(dialog.message(), message);
                QCOMPARE(slot->accessibleDescription(), message);
            }
            turn(true);
            for (const QString& member : members)
                QCOMPARE(dialog.form()
                             .slot_of(control(panel, member.toStdString()).id)
                             ->accessibleDescription(),
                         "");
        });
    }

    void leaves_absolute_usable_at_all_times()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QVERIFY(editor(dialog, panel, "Absolute")->isEnabled());
            panel.fill(control(panel, "P Align with normals").id, 0);
            dialog.form().refresh();
            QVERIFY(editor(dialog, panel, "Absolute")->isEnabled());
        });
    }

    void goes_through_all_controls_with_tab()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            const auto names_from = [&](const std::string& first, qsizetype count) {
                QStringList names;
                dialog.form().slot_of(control(panel, first).id)->focus();
                for (qsizetype i = 0; i < count; ++i) {
                    const QWidget* const here = QApplication::focusWidget();
                    const auto* slot = dynamic_cast<const ControlSlot*>(here);
                    if (slot == nullptr)
                        slot = dynamic_cast<const ControlSlot*>(here->parentWidget());
                    names.append(slot != nullptr ? slot->objectName() : here->objectName());
                    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                }
                return names;
            };
            QStringList expected = basic + outside;
            expected.removeAll("---");
            QCOMPARE(names_from("Number of Clones", expected.size()), expected);
            dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
            expected = advanced + outside;
            expected.removeAll("---");
            QCOMPARE(names_from("Size depends on Poly Area", expected.size()), expected);
        });
    }

    void resets_values_in_the_panel_alone()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            support::type(editor(dialog, panel, "Number of Clones"), "7");
            support::type(editor(dialog, panel, "H Max"), "1");
            dialog.accept();
        });
        run([](PanelDialog& dialog, FormPanel& panel) {
            QTest::mouseClick(editor(dialog, panel, "Reset Values"), Qt::LeftButton);
            QCOMPARE(shown(editor(dialog, panel, "Number of Clones")), "30");
            QVERIFY(same_bits(number(panel, "H Max"), 0.17452777777777778));
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
        });
        run([](PanelDialog& dialog, FormPanel& panel) {
            QCOMPARE(shown(editor(dialog, panel, "Number of Clones")), "7");
        });
    }

    void zeroes_the_six_angles_and_nothing_else()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            QTest::mouseClick(editor(dialog, panel, "Zero Angles"), Qt::LeftButton);
            for (const std::string label :
                 {"Random rotation H Min", "H Max", "P Min", "P Max", "B Min", "B Max"}) {
                QVERIFY(same_bits(number(panel, label), 0.0));
                QCOMPARE(shown(editor(dialog, panel, label)), "0");
            }
            QVERIFY(same_bits(number(panel, "Max Slope Angle"), 3.1415));
            QVERIFY(same_bits(number(panel, "Distribution"), 0.8));
        });
    }

    void tells_about_the_module()
    {
        run([this](PanelDialog& dialog, FormPanel& panel) {
            QTest::mouseClick(editor(dialog, panel, "About"), Qt::LeftButton);
            QCOMPARE(user_.informed.size(), std::size_t{1});
            QVERIFY(QString::fromStdString(user_.informed[0]).contains("1.6.1"));
        });
    }

    void offers_the_weight_maps_of_the_scene()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            for (const std::string label :
                 {"Density WeightMap", "Size WeightMap", "P angle weightmap"}) {
                const auto* const list = qobject_cast<QComboBox*>(editor(dialog, panel, label));
                QCOMPARE(static_cast<std::size_t>(list->count()),
                         control(panel, label).choices.size());
                QCOMPARE(list->itemText(0), "none");
                QVERIFY(list->findText("Density") > 0);
            }
            auto* const list = qobject_cast<QComboBox*>(editor(dialog, panel, "Density WeightMap"));
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Down);
            QCOMPARE(std::get<int>(control(panel, "Density WeightMap").value), 1);
        });
    }

    void ends_typing_with_enter_before_it_confirms()
    {
        run([](PanelDialog& dialog, FormPanel& panel) {
            auto* const field =
                dynamic_cast<desktop::NumberField*>(editor(dialog, panel, "Number of Clones"));
            support::type(field, "2*75");
            QTest::keyClick(field, Qt::Key_Return);
            QVERIFY(dialog.isVisible());
            QCOMPARE(field->text(), "150");
            QCOMPARE(std::get<int>(control(panel, "Number of Clones").value), 150);
            QTest::keyClick(field, Qt::Key_Enter, Qt::KeypadModifier);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        });
        run([](PanelDialog& dialog, FormPanel& panel) {
            QWidget* const field = editor(dialog, panel, "Number of Clones");
            support::type(field, "9");
            QTest::keyClick(field, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(std::get<int>(control(panel, "Number of Clones").value), 9);
        });
    }

    void takes_enter_for_ok_and_escape_for_cancel_everywhere()
    {
        for (const std::string label :
             {"Number of Clones", "Independent Sizes", "Size WeightMap", "Zero Angles", "About"}) {
            run([&](PanelDialog& dialog, FormPanel& panel) {
                dialog.form().slot_of(control(panel, label).id)->focus();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                QVERIFY2(!dialog.isVisible(), label.c_str());
                QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
            });
            run([&](PanelDialog& dialog, FormPanel& panel) {
                dialog.form().slot_of(control(panel, label).id)->focus();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
                QVERIFY2(!dialog.isVisible(), label.c_str());
                QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
            });
        }
    }
};

} // namespace

int main(int count, char** arguments)
{
    PanelTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "panel_test.moc"
