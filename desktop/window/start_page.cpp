// SPDX-License-Identifier: MIT
#include "desktop/window/start_page.h"

#include <array>
#include <system_error>

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPainter>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/text.h"

namespace desktop {

namespace fs = std::filesystem;

namespace {

constexpr auto most_recent = 6;
constexpr auto file_property = "file";

/// Draws the dashed frame of the drop area.
class DropTarget : public QFrame {
public:
    explicit DropTarget(QWidget* parent) : QFrame(parent)
    {
        auto* const title = new QLabel(StartPage::tr("Drop object files here"), this);
        QFont large = title->font();
        large.setPointSizeF(large.pointSizeF() * 1.7);
        title->setFont(large);
        auto* const order =
            new QLabel(StartPage::tr("First the ground, then what is to be cloned over it."), this);
        auto* const column = new QVBoxLayout(this);
        const int margin = fontMetrics().lineSpacing() * 2;
        column->setContentsMargins(margin, margin, margin, margin);
        column->addStretch(1);
        for (QLabel* const label : {title, order}) {
            label->setAlignment(Qt::AlignCenter);
            label->setWordWrap(true);
            column->addWidget(label);
        }
        column->addStretch(1);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        constexpr int width = 2;
        constexpr int corner = 8;
        QFrame::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().placeholderText().color(), width, Qt::DashLine));
        painter.drawRoundedRect(rect().adjusted(width, width, -width, -width), corner, corner);
    }
};

QToolButton* text_button(const QString& text, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setText(text);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

} // namespace

StartPage::StartPage(QWidget* over)
    : QFrame(over), examples_(text_button(tr("Open the E&xamples"), this)),
      recent_(new QWidget(this)), files_(new QVBoxLayout(recent_))
{
    setObjectName("start page");
    setAutoFillBackground(true);
    auto* const open = text_button(tr("&Open Files..."), this);
    open->setObjectName("open files");
    examples_->setObjectName("open examples");
    examples_->setToolTip(tr("A terrain and a tree to try things out with"));
    files_->setContentsMargins(0, 0, 0, 0);
    files_->setSpacing(2);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(open);
    buttons->addWidget(examples_);
    buttons->addStretch(1);
    auto* const column = new QVBoxLayout(this);
    const int margin = fontMetrics().lineSpacing() * 2;
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(fontMetrics().lineSpacing());
    column->addStretch(1);
    column->addWidget(new DropTarget(this), 4);
    column->addLayout(buttons);
    column->addWidget(recent_);
    column->addStretch(1);
    connect(open, &QToolButton::clicked, this, &StartPage::open_asked);
    connect(examples_, &QToolButton::clicked, this, &StartPage::examples_asked);
    over->installEventFilter(this);
    setGeometry(over->rect());
}

bool StartPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QFrame::eventFilter(watched, event);
}

void StartPage::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    elide_names();
}

void StartPage::appear()
{
    examples_->setVisible(!example_folder().empty());
    list_recent();
    setGeometry(parentWidget()->rect());
    show();
    raise();
}

void StartPage::list_recent()
{
    while (QLayoutItem* const item = files_->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item; // NOLINT(*-owning-memory): a layout gives its items away
    }
    QStringList files = QSettings().value("recent").toStringList();
    files.removeIf([](const QString& file) { return !QFileInfo(file).isFile(); });
    recent_->setVisible(!files.isEmpty());
    auto* const title = new QLabel(tr("Used lately:"), recent_);
    title->setAlignment(Qt::AlignCenter);
    files_->addWidget(title);
    for (const QString& file : files.mid(0, most_recent)) {
        QToolButton* const button = text_button({}, recent_);
        button->setCursor(Qt::PointingHandCursor);
        button->setProperty(file_property, file);
        button->setToolTip(tool_tip(printable(file)));
        button->setAccessibleName(printable(file));
        files_->addWidget(button, 0, Qt::AlignHCenter);
        connect(button, &QToolButton::clicked, this, [this, file] { emit recent_asked(file); });
    }
    elide_names();
}

/// Elides long names in the middle.
void StartPage::elide_names()
{
    const int room = width() - 6 * fontMetrics().lineSpacing();
    for (QToolButton* const button : recent_->findChildren<QToolButton*>()) {
        const QString name =
            printable(QDir::toNativeSeparators(button->property(file_property).toString()));
        button->setText(in_menu(fontMetrics().elidedText(name, Qt::ElideMiddle, room)));
    }
}

fs::path example_folder()
{
    std::error_code failed;
    fs::path folder = fs::read_symlink("/proc/self/exe", failed).parent_path();
    // Relative to an installed program, or to the build folder.
    for (int up = 0; up < 3 && !failed && folder.has_relative_path(); ++up) {
        folder = folder.parent_path();
        for (const char* const place : {"share/dastrel/examples", "examples"}) {
            std::error_code ignored;
            if (fs::is_regular_file(folder / place / "terrain.lwo", ignored))
                return folder / place;
        }
    }
    return {};
}

} // namespace desktop
