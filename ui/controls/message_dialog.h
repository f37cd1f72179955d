// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A question or a message in the theme: a sign, a headline, an explanation, buttons. It never takes the
// keyboard from another program: where this one is not in use it opens without the focus and asks for
// attention. What was typed as it appeared was not meant for it, so it ignores keys for its first half
// second. Main thread.
#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QBoxLayout;

namespace lumora {

class ButtonStyle;
class StyledButton;

class MessageDialog : public QDialog
{
    Q_OBJECT

public:
    // Texts are plain; a headline too long for one line is shortened in its middle.
    MessageDialog(const QString& text, const QString& informativeText, QWidget* parent = nullptr);

    const QString& text() const { return m_text; }
    const QString& informativeText() const { return m_informativeText; }

    // One more line under the explanation, quieter; a long one is shortened in its middle.
    void addDetail(const QString& detail);
    // Under the texts, above the buttons.
    void addControl(QWidget* control);
    // The first one is the default and stands last. A press closes the dialog.
    StyledButton* addButton(const ButtonStyle& style, const QString& text);
    // At the other end of the row, for what goes beyond the question.
    StyledButton* addLeadingButton(const ButtonStyle& style, const QString& text);

    // The button that closed the dialog; null after Escape, after its close button, or when the program ends.
    const StyledButton* clickedButton() const { return m_clicked; }

    // Shows it until it is answered or the program ends. Meanwhile the other windows take no input.
    void ask();

protected:
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    StyledButton* makeButton(const ButtonStyle& style, const QString& text);
    void askQuietly();
    bool isForThis(const QObject* receiver) const;
    bool isForOtherWindow(const QObject* receiver) const;

    const QString m_text;
    const QString m_informativeText;
    QBoxLayout* m_texts;
    QBoxLayout* m_leading;
    QBoxLayout* m_trailing;
    const StyledButton* m_clicked = nullptr;
    QElapsedTimer m_inFront; // since it was shown or got the keyboard for the first time
    bool m_hadKeyboard = false;
    bool m_isQuiet = false;
};

} // namespace lumora
