// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_view.h"

#include "model/result_text.h"
#include "ui/comparison/compared_files.h"
#include "ui/comparison/comparison_controls.h"
#include "ui/comparison/picture_caption.h"
#include "ui/controls/byte_text.h"
#include "ui/controls/path_text.h"
#include "ui/theme/surfaces.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

using namespace std::chrono_literals;

constexpr QMargins padding(22, 42, 22, 16);
constexpr double lineStep = 0.02;
constexpr double panStep = 64;
// Before that nobody wonders what becomes of it.
constexpr auto progressPause = 200ms;

QString savingText(const ProcessingResult& result)
{
    return metricsText(result, QLocale()).section(QStringLiteral(" | "), 1);
}

} // namespace

ComparisonView::ComparisonView(const std::filesystem::path& workerProgram, QWidget* parent)
    : QWidget(parent), m_worker(workerProgram),
      m_captions{new PictureCaption(QStringLiteral("Original"), PictureCaption::Edge::leading),
                 new PictureCaption(QStringLiteral("Output"), PictureCaption::Edge::trailing)},
      m_canvas(new ComparisonCanvas)
{
    setFocusPolicy(Qt::ClickFocus);
    auto* captions = new QHBoxLayout;
    captions->setSpacing(18);
    for (PictureCaption* caption : m_captions)
        captions->addWidget(caption, 1);
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(padding);
    stack->setSpacing(12);
    stack->addLayout(captions);
    stack->addWidget(m_canvas, 1);
    stack->addWidget(new ComparisonControls(*m_canvas, m_results));
    m_progress.setInterval(progressPause);
    connect(&m_results, &ResultSequence::currentChanged, this, &ComparisonView::display);
    connect(m_canvas, &ComparisonCanvas::wanted, this, [this](Side side, const PicturePart& part) {
        m_pictures[side].reader->want(part);
        if (!m_progress.isActive()) m_progress.start();
    });
    connect(m_canvas, &ComparisonCanvas::changed, this, &ComparisonView::describe);
    connect(&m_progress, &QTimer::timeout, this, &ComparisonView::showProgress);
}

ComparisonView::~ComparisonView() = default;

void ComparisonView::compare(ComparableResults& results, const QModelIndex& index)
{
    m_results.begin(results, index);
}

bool ComparisonView::isComplete() const
{
    return std::ranges::all_of(m_pictures, &Picture::isSettled) && m_canvas->isComplete();
}

void ComparisonView::display()
{
    m_canvas->clear();
    m_progress.start();
    for (const Side side : {ComparisonCanvas::original, ComparisonCanvas::output})
        read(side);
    showFacts();
    Q_EMIT titleChanged(QStringLiteral("%1 - Comparison").arg(nameOf(ComparisonCanvas::original)));
}

void ComparisonView::read(Side side)
{
    const bool isOriginal = side == ComparisonCanvas::original;
    const ProcessingResult result = *m_results.current();
    Picture& picture = m_pictures[side];
    picture = {};
    picture.reader = std::make_unique<PictureReader>(
        isOriginal ? QStringLiteral("The original") : QStringLiteral("The output"),
        [result, isOriginal] { return isOriginal ? findOriginal(result) : findOutput(result); }, m_worker);
    connect(picture.reader.get(), &PictureReader::opened, this, [this, side](const PictureFacts& facts) {
        m_pictures[side].facts = facts;
        showFacts();
    });
    connect(picture.reader.get(), &PictureReader::failed, this, [this, side](const QString& sentence) {
        m_pictures[side].failure = sentence;
        m_pictures[side].facts.reset();
        showFacts();
    });
    connect(
        picture.reader.get(), &PictureReader::drawn, this,
        [this, side](const PicturePart& part, const QImage& pixels) { m_canvas->take(side, part, pixels); });
}

void ComparisonView::showFacts()
{
    QStringList failures;
    for (const Side side : {ComparisonCanvas::original, ComparisonCanvas::output}) {
        m_captions[side]->display(nameOf(side), factsOf(side));
        if (!m_pictures[side].failure.isEmpty()) failures << m_pictures[side].failure;
    }
    // Where they lie is known when both sizes are.
    if (std::ranges::all_of(m_pictures, &Picture::isSettled)) {
        const auto sizeOf = [this](Side side) {
            return m_pictures[side].facts.value_or(PictureFacts{}).size;
        };
        m_canvas->setSizes(sizeOf(ComparisonCanvas::original), sizeOf(ComparisonCanvas::output));
        m_canvas->setNotice(failures.join(u'\n'));
    }
    describe();
}

QString ComparisonView::nameOf(Side side) const
{
    const ProcessingResult& result = *m_results.current();
    const auto& path = side == ComparisonCanvas::original ? result.sourceURL : result.outputURL.value_or("");
    return fileNameText(path);
}

QStringList ComparisonView::factsOf(Side side) const
{
    const auto& facts = m_pictures[side].facts;
    QStringList texts;
    if (facts)
        texts << facts->format
              << QStringLiteral("%1 \u00D7 %2").arg(facts->size.width()).arg(facts->size.height())
              << byteText(facts->bytes);
    if (side == ComparisonCanvas::output) texts << savingText(*m_results.current());
    if (facts) texts << (facts->profile.isEmpty() ? QStringLiteral("no profile") : facts->profile);
    if (facts && facts->isInTrash) texts << QStringLiteral("in the Trash");
    if (!m_pictures[side].failure.isEmpty()) texts << QStringLiteral("cannot be shown");
    texts.removeAll(QString());
    return texts;
}

void ComparisonView::showProgress()
{
    if (isComplete()) {
        m_progress.stop();
        return m_canvas->setProgress(std::nullopt);
    }
    double least = 1;
    for (const Picture& picture : m_pictures) {
        if (!picture.isSettled()) least = 0;
        if (const auto part = picture.reader ? picture.reader->progress() : std::nullopt)
            least = std::min(least, *part);
    }
    m_canvas->setProgress(least);
}

// What the canvas shows, for those who do not see it.
void ComparisonView::describe()
{
    if (!m_results.current()) return;
    m_canvas->setAccessibleName(
        QStringLiteral("Comparison of %1 with %2")
            .arg(nameOf(ComparisonCanvas::original), nameOf(ComparisonCanvas::output)));
    const auto percent = [](double part) { return QString::number(std::lround(part * 100)) + u'%'; };
    QStringList states{QStringLiteral("zoom %1").arg(percent(m_canvas->geometry().zoom()))};
    if (m_canvas->showsDifference())
        states << QStringLiteral("difference");
    else
        states << QStringLiteral("line at %1").arg(percent(m_canvas->split()));
    if (m_canvas->isFlipped()) states << QStringLiteral("flipped");
    for (const Picture& picture : m_pictures) {
        if (!picture.failure.isEmpty()) states << picture.failure;
    }
    m_canvas->setAccessibleDescription(states.join(QStringLiteral(", ")));
}

bool ComparisonView::takeKey(int key, Qt::KeyboardModifiers modifiers)
{
    switch (key) {
    case Qt::Key_Escape:
        Q_EMIT closeRequested();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        m_canvas->stepZoom(1);
        return true;
    case Qt::Key_Minus:
        m_canvas->stepZoom(-1);
        return true;
    case Qt::Key_0:
        m_canvas->fit();
        return true;
    case Qt::Key_1:
        m_canvas->zoomTo(1);
        return true;
    case Qt::Key_D:
        m_canvas->setShowsDifference(!m_canvas->showsDifference());
        return true;
    case Qt::Key_PageUp:
        m_results.step(-1);
        return true;
    case Qt::Key_PageDown:
        m_results.step(1);
        return true;
    case Qt::Key_Home:
    case Qt::Key_End:
        m_canvas->setSplit(key == Qt::Key_Home ? 0 : 1);
        return true;
    default:
        return takeArrow(key, modifiers.testFlag(Qt::ShiftModifier));
    }
}

// Up and down have no line to move.
bool ComparisonView::takeArrow(int key, bool pans)
{
    const int x = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : 0;
    const int y = key == Qt::Key_Up ? -1 : key == Qt::Key_Down ? 1 : 0;
    if (x == 0 && y == 0) return false;
    if (pans || y != 0)
        m_canvas->panBy(QPointF(-x, -y) * panStep);
    else
        m_canvas->setSplit(m_canvas->split() + x * lineStep);
    return true;
}

void ComparisonView::keyPressEvent(QKeyEvent* event)
{
    constexpr auto others = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (event->modifiers() & others) return QWidget::keyPressEvent(event);
    // A key that is held since before the window opened is not meant for it.
    if (event->key() == Qt::Key_Space) {
        if (!event->isAutoRepeat()) m_canvas->setFlipped(true);
        return;
    }
    if (!takeKey(event->key(), event->modifiers())) QWidget::keyPressEvent(event);
}

void ComparisonView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space) return QWidget::keyReleaseEvent(event);
    if (!event->isAutoRepeat()) m_canvas->setFlipped(false);
}

// The release of the key may go elsewhere.
bool ComparisonView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate) m_canvas->setFlipped(false);
    return QWidget::event(event);
}

// Nothing is marked as focused before the keyboard is used.
void ComparisonView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!window()->focusWidget()) setFocus();
}

void ComparisonView::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

} // namespace lumora
