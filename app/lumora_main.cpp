// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lumora_main.h"

#include "app/app_delegate.h"
#include "app/instance/application_id.h"
#include "app/instance/launch_request.h"
#include "app/instance/single_instance.h"
#include "app/termination.h"
#include "app/window/branded_window_accessible.h"
#include "model/termination_signals.h"
#include "system/bundle.h"
#include "system/private_folder.h"
#include "ui/settings/preferences_view.h"
#include "ui/theme/lumora_style.h"

#include <QApplication>
#include <QDBusConnection>
#include <QIcon>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace lumora::LumoraMain {
namespace {

constexpr char helpText[] = R"(Usage: lumora [OPTION] [FILE OR FOLDER]...

Optimizes pictures. The files are handed to the program that runs already, if one does.

  --preferences   show the preferences
  --help          print this text
  --version       print the version
  --              what follows are files, whatever they are named

Without a window, use lumora-cli.
)";

int complain(const std::string& text)
{
    std::cerr << "lumora: " << text << '\n';
    return 2;
}

bool hasDisplay()
{
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(variable);
        if (value && *value) return true;
    }
    return false;
}

// The toolkit would abort, after a page of its own words.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtFatalMsg) {
        std::cerr << "lumora: the display cannot be reached; use lumora-cli\n";
        std::_Exit(1);
    }
    if (!QByteArray(context.category).startsWith("qt.qpa"))
        std::cerr << text.toLocal8Bit().constData() << '\n';
}

void describeApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Tidewell"));
    QCoreApplication::setApplicationName(QStringLiteral("Lumora"));
    QGuiApplication::setDesktopFileName(applicationId);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(applicationId, QIcon(QStringLiteral(":/lumora/application-icon.svg"))));
}

// The toolkit takes Wayland's leave to raise a window from this variable alone. Threads that look for others
// in the environment must not see it move, as it does where a variable is added to it: this one is there
// before them, and to change its value swaps one pointer.
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

void makeRoomForToken()
{
    if (!qEnvironmentVariableIsSet(tokenVariable)) qputenv(tokenVariable, "");
}

// X11's leave is not needed here.
void useToken(const QByteArray& token)
{
    const bool onWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (onWayland && !token.isEmpty()) qputenv(tokenVariable, token);
}

void connectRequests(SingleInstance& instance, AppDelegate& delegate)
{
    QObject::connect(&instance, &SingleInstance::opened, &delegate, &AppDelegate::open);
    QObject::connect(&instance, &SingleInstance::activated, &delegate, [&delegate](const QByteArray& token) {
        useToken(token);
        delegate.showMainWindow();
    });
    QObject::connect(&instance, &SingleInstance::preferencesRequested, &delegate,
                     [&delegate](const QByteArray& token) {
                         useToken(token);
                         delegate.showPreferences();
                     });
}

int run(int argc, char** argv, const LaunchRequest& request)
{
    removeAbandonedFolders();
    // Ignored, as a parent may leave it, the encoder's exit status would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    // A file that grows beyond what the user may write is a failed write, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    makeRoomForToken();
    const QtMessageHandler usual = qInstallMessageHandler(endWithoutDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    describeApplication();
    SingleInstance instance(QDBusConnection::sessionBus());
    const std::optional<LaunchRequest> mine = instance.start(request);
    if (!mine) return 0;

    QApplication::setStyle(new LumoraStyle);
    exposeBrandedWindows();
    TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, &Termination::shared(), &Termination::begin);
    AppDelegate delegate(QDBusConnection::sessionBus());
    connectRequests(instance, delegate);
    // Whoever starts the program from now on takes over.
    QObject::connect(&Termination::shared(), &Termination::begun, &instance, &SingleInstance::giveUp);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &instance, &SingleInstance::giveUp);
    delegate.applicationDidFinishLaunching();
    if (!mine->files.empty()) delegate.open(mine->files);
    if (mine->preferences) delegate.showPreferences();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const LaunchArguments arguments = parseLaunchArguments({argv + std::min(argc, 1), argv + argc});
    switch (arguments.kind) {
    case LaunchArguments::Kind::wrong:
        return complain(arguments.complaint + "; try 'lumora --help'");
    case LaunchArguments::Kind::help:
        std::cout << helpText;
        return 0;
    case LaunchArguments::Kind::version:
        std::cout << "lumora " << PreferencesView::appVersionText(mainBundlePath()).toStdString() << '\n';
        return 0;
    case LaunchArguments::Kind::launch:
        break;
    }
    for (const std::string& address : arguments.ignored)
        complain("'" + address + "' is not a file of this computer and is left out");
    if (!hasDisplay()) {
        std::cerr << "lumora: there is no display; use lumora-cli\n";
        return 1;
    }
    // The toolkit's own options are not offered: they would take names away from files.
    int onlyProgram = std::min(argc, 1);
    try {
        return run(onlyProgram, argv, arguments.request);
    } catch (const std::exception& error) {
        // Without a descriptor or memory to begin with.
        complain(std::string("cannot start: ") + error.what());
        return 1;
    }
}

} // namespace lumora::LumoraMain
