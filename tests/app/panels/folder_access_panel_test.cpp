// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/folder_access_panel.h"

#include "tests/support/temporary_directory.h"

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

#include <gtest/gtest.h>

using namespace lumora;

namespace {

class FolderAccessPanel : public testing::Test
{
protected:
    std::optional<std::filesystem::path> ask(const std::function<void(QFileDialog&)>& answer)
    {
        QTimer::singleShot(0, &m_context, [&] {
            auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(panel);
            answer(*panel);
        });
        return requestSaveAccess(m_folder.path(), nullptr);
    }

    QObject m_context;
    test::TemporaryDirectory m_folder;
};

TEST_F(FolderAccessPanel, SaysWhatItAsksFor)
{
    ask([this](QFileDialog& panel) {
        const QString name = QString::fromStdString(m_folder.path().filename().native());
        EXPECT_EQ(panel.windowTitle(),
                  QStringLiteral("Allow Lumora to save converted images in %1.").arg(name));
        EXPECT_EQ(panel.labelText(QFileDialog::Accept), QStringLiteral("Allow Save Access"));
        EXPECT_EQ(panel.fileMode(), QFileDialog::Directory);
        EXPECT_TRUE(panel.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(panel.directory().path().toStdString(), m_folder.path().native());
        panel.reject();
    });
}

TEST_F(FolderAccessPanel, ARefusalGrantsNothing)
{
    EXPECT_EQ(ask([](QFileDialog& panel) { panel.reject(); }), std::nullopt);
}

TEST_F(FolderAccessPanel, ConfirmingGrantsTheFolder)
{
    EXPECT_EQ(ask([this](QFileDialog& panel) {
                  panel.selectFile(QString::fromStdString(m_folder.path().native()));
                  static_cast<QDialog&>(panel).done(QDialog::Accepted);
              }),
              m_folder.path());
}

} // namespace
