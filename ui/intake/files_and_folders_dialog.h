// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A panel that chooses any mixture of image files and folders, which no desktop's own panel offers.
#pragma once

#include <QFileDialog>

#include <filesystem>
#include <functional>
#include <vector>

namespace lumora {

class FilesAndFoldersDialog : public QFileDialog
{
    Q_OBJECT

public:
    explicit FilesAndFoldersDialog(QWidget* parent = nullptr);

    void accept() override;

private:
    void nameSelection();
    bool enterTypedFolder();
};

// Gives a panel that the toolkit draws itself room for its columns; the desktop's own stays as it is.
void makeRoomy(QFileDialog& panel);

using ChosenFiles = std::function<void(std::vector<std::filesystem::path>)>;

// Opens the panel above `parent` and returns at once; nothing is called where the user cancels.
void chooseFilesAndFolders(QWidget* parent, ChosenFiles chosen);

// The same with the platform theme's panel, which takes either files or folders.
void choosePlatformFiles(QWidget* parent, bool folders, ChosenFiles chosen);

} // namespace lumora
