// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A result's original and output side by side in one place: names and facts above, the pictures, what can be
// done below. Reads the pictures itself, away from the main thread and the process. Main thread.
#pragma once

#include "ui/comparison/comparison_canvas.h"
#include "ui/comparison/picture_reader.h"
#include "ui/comparison/result_sequence.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <filesystem>
#include <memory>
#include <optional>

namespace lumora {

class PictureCaption;

class ComparisonView : public QWidget
{
    Q_OBJECT

public:
    // `workerProgram` reads the pictures.
    explicit ComparisonView(const std::filesystem::path& workerProgram, QWidget* parent = nullptr);
    ~ComparisonView() override;

    // A result of the list, which may go before the view does.
    void compare(ComparableResults& results, const QModelIndex& index);
    // Whether all is shown that the window has room for.
    bool isComplete() const;

    QSize sizeHint() const override { return {1000, 720}; }

Q_SIGNALS:
    // For the task bar: which files are compared.
    void titleChanged(const QString& title);
    void closeRequested();

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Side = ComparisonCanvas::Side;

    // What is known of one picture so far.
    struct Picture
    {
        std::unique_ptr<PictureReader> reader;
        std::optional<PictureFacts> facts;
        QString failure;
        bool isSettled() const { return facts || !failure.isEmpty(); }
    };

    void display();
    void read(Side side);
    void showFacts();
    QString nameOf(Side side) const;
    QStringList factsOf(Side side) const;
    void showProgress();
    void describe();
    bool takeKey(int key, Qt::KeyboardModifiers modifiers);
    bool takeArrow(int key, bool pans);

    ResultSequence m_results;
    const std::filesystem::path m_worker;
    std::array<Picture, 2> m_pictures;
    std::array<PictureCaption*, 2> m_captions;
    ComparisonCanvas* m_canvas;
    QTimer m_progress;
};

} // namespace lumora
