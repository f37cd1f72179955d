# Headers that many sources of a library read, parsed once a library instead of once a source. They only save time: a
# source names all that it uses, and the preset "fuzz" as well as clang-tidy read every file without them.
set(standardHeaders
  <algorithm> <array> <chrono> <cmath> <cstddef> <cstdint> <cstring> <filesystem> <functional> <memory> <optional> <span>
  <string> <string_view> <unordered_map> <utility> <vector>)
set(threadHeaders
  <condition_variable> <deque> <mutex> <stop_token> <thread>)
set(coreHeaders
  <QByteArray> <QCoreApplication> <QLocale> <QObject> <QString> <QTimer> <QVariant>)
set(widgetHeaders
  <QAbstractButton> <QApplication> <QBoxLayout> <QComboBox> <QDBusConnection> <QDBusMessage> <QDBusPendingCallWatcher>
  <QDBusPendingReply> <QDBusVariant> <QEvent> <QFile> <QFileDialog> <QFontMetrics> <QKeyEvent> <QLabel> <QLineEdit>
  <QLinearGradient> <QMenu> <QMimeData> <QPainter> <QPainterPath> <QPixmap> <QPushButton> <QScreen> <QScrollArea>
  <QScrollBar> <QSlider> <QStyle> <QStyleOption> <QSvgRenderer> <QUrl> <QVariantMap> <QWidget> <QWindow>)

target_precompile_headers(lumora_records PRIVATE ${standardHeaders})
target_precompile_headers(lumora_engine REUSE_FROM lumora_records)
target_precompile_headers(lumora_history REUSE_FROM lumora_records)
target_precompile_headers(lumora_system REUSE_FROM lumora_records)
target_precompile_headers(lumora_pixels PRIVATE ${standardHeaders} <vips/vips.h>)
target_precompile_headers(lumora_formats REUSE_FROM lumora_pixels)
target_precompile_headers(lumora_metadata PRIVATE ${standardHeaders}  <exiv2/exiv2.hpp>)
target_precompile_headers(lumora_model PRIVATE ${standardHeaders} ${threadHeaders} ${coreHeaders})
target_precompile_headers(lumora_cli_lib REUSE_FROM lumora_model)
if(TARGET lumora_ui)
  target_precompile_headers(lumora_ui PRIVATE ${standardHeaders} ${coreHeaders} ${widgetHeaders})
  target_precompile_headers(lumora_app_lib REUSE_FROM lumora_ui)
endif()
