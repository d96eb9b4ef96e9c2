// Takes the pictures of docs/pictures with the real window on an X server: pictures BASE SOURCES FOLDER SET, where SET
// is "all", or the ending of a single picture of the window: "dark", "japanese", "large".
#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <cstdio>

#include "desktop/application.hpp"
#include "desktop/help/help_desk.hpp"
#include "desktop/help/help_window.hpp"
#include "desktop/list_widget.hpp"
#include "desktop/main_window.hpp"
#include "desktop/session.hpp"
#include "desktop/start/analyse_dialog.hpp"
#include "desktop/start/start_window.hpp"
#include "desktop/theme.hpp"
#include "orvane/settings.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/string_table.hpp"

namespace {

template<typename W>
W& in(QWidget& parent, const std::string& name) {
  for (W* found : parent.findChildren<W*>(QString::fromStdString(name)))
    return *found;
  throw platform::Error("no widget " + name);
}

class Camera {
 public:
  explicit Camera(QString folder) : m_folder(std::move(folder)) {}

  /// The screen; what lies behind `front` is dimmed, because no window manager frames it here.
  void shoot(const char* name, const QWidget* front = nullptr) const {
    QTest::qWait(250); // for what is drawn later
    const QString file = QStringLiteral("%1/%2.png").arg(m_folder, QString::fromLatin1(name));
    QImage picture = QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32);
    if (front) dimBehind(picture, *front);
    constexpr int kSmallest = 0;
    if (!picture.save(file, "PNG", kSmallest)) throw platform::Error(file.toStdString() + ": cannot be written");
  }

 private:
  static void dimBehind(QImage& picture, const QWidget& front) {
    constexpr QColor kDim(20, 26, 38, 110);
    QPainter painter(&picture);
    painter.setClipRegion(QRegion(picture.rect()) - QRegion(front.geometry()));
    painter.fillRect(picture.rect(), kDim);
    painter.setClipping(false);
    painter.setPen(desktop::theme().border);
    painter.drawRect(front.geometry().adjusted(-1, -1, 0, 0));
  }

  QString m_folder;
};

/// Does something in the next dialog, which holds the caller meanwhile.
void inNextDialog(const std::function<void(QDialog&)>& step) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, step] {
    auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    step(*dialog);
  });
  timer->start(10);
}

void center(QWidget& widget) {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  widget.move(screen.center() - QPoint(widget.width() / 2, widget.height() / 2));
}

void shootDialog(const Camera& camera, const char* name, QWidget& dialog) {
  center(dialog);
  camera.shoot(name, &dialog);
}

class Shooting {
 public:
  Shooting(std::string base, QString sources, const Camera& camera)
      : m_base(std::move(base)), m_sources(std::move(sources)), m_camera(camera),
        m_settings(new orvane::MemorySettings) {}

  void openWindow() {
    m_session = std::make_unique<desktop::Session>(orvane::BaseFolder::open(m_base), "bank", m_settings);
    m_session->start();
    window().setGeometry(QGuiApplication::primaryScreen()->geometry());
    window().activateWindow();
    platform::ignoring([this] { choose("lvPrograms", "BKB040"); });
    window().focusPane("Lists");
    in<QTabBar>(window(), "tsLists").setCurrentIndex(1);
    QTest::qWait(50);
    choose("lvList1", "AC-ACCT-NO");
  }

  void all() {
    startPage();
    openWindow();
    m_camera.shoot("window");
    for (int i = 0; i < 2; ++i)
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4);
    m_camera.shoot("source");
    dialogs();
    reports();
  }

  void single(const std::string& name) {
    openWindow();
    m_camera.shoot(("window-" + name).c_str());
  }

 private:
  desktop::MainWindow& window() { return *m_session->window(); }
  QAction& action(const char* name) { return in<QAction>(name); }
  template<typename W>
  W& in(const char* name) {
    return ::in<W>(window(), name);
  }
  template<typename W>
  static W& in(QWidget& parent, const char* name) {
    return ::in<W>(parent, name);
  }

  // By its first column; "" is the first row.
  void choose(const char* list, const std::string& name) {
    auto& view = in<QTreeView>(list);
    for (int row = 0; row < view.model()->rowCount(); ++row) {
      const QModelIndex index = view.model()->index(row, 0);
      if (!name.empty() && index.data().toString().toStdString() != name) continue;
      view.setFocus();
      QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
      return;
    }
    throw platform::Error("no row " + name);
  }

  void startPage() {
    desktop::rememberProject({"/home/ana/Documents/Tarnsift/insurance", "insurance"}, *m_settings);
    desktop::rememberProject({m_base, "bank"}, *m_settings);
    QWidget ground; // what a desktop would show
    ground.setGeometry(QGuiApplication::primaryScreen()->geometry());
    ground.setPalette(desktop::theme().window);
    ground.show();
    desktop::StartWindow page(m_settings);
    page.show();
    center(page);
    page.activateWindow();
    m_camera.shoot("start", &page);
    inNextDialog([this](QDialog& dialog) {
      QTest::qWait(300);
      shootDialog(m_camera, "analyse", dialog);
      dialog.reject();
    });
    page.analyse({m_sources});
  }

  void dialogs() {
    shootAction("mnuFileSynonyms", "synonyms");
    inNextDialog([this](QDialog& dialog) {
      for (QLineEdit* field : dialog.findChildren<QLineEdit*>())
        if (field->placeholderText() == QStringLiteral("*ACCT*")) field->setText(QStringLiteral("*ACCT*"));
      shootDialog(m_camera, "search", dialog);
      dialog.reject();
    });
    action("mnuFileSearchTo0").trigger();
    shootAction("mnuViewOptions", "options");
    inNextDialog([this](QDialog& dialog) {
      in<QLineEdit>(dialog, "name").setText(QStringLiteral("wider accounts"));
      inNextDialog([this](QDialog& sizes) {
        shootDialog(m_camera, "sizes", sizes);
        sizes.reject();
      });
      dialog.accept();
    });
    action("mnuFileCreateFrom1").trigger();
    desktop::helpDesk().show(QStringLiteral("synonyms"));
    shootDialog(m_camera, "help", *desktop::helpDesk().window());
    desktop::helpDesk().window()->close();
  }

  void shootAction(const char* name, const char* picture) {
    inNextDialog([this, picture](QDialog& dialog) {
      shootDialog(m_camera, picture, dialog);
      dialog.reject();
    });
    action(name).trigger();
  }

  void reports() {
    action("mnuFileReportType5").trigger();
    QTest::qWait(300);
    for (QWidget* shown : QApplication::topLevelWidgets())
      if (shown->isVisible() && shown->objectName() == QStringLiteral("reportWindow"))
        shootDialog(m_camera, "report", *shown);
  }

  std::string m_base;
  QString m_sources;
  const Camera& m_camera;
  platform::Ref<orvane::MemorySettings> m_settings;
  std::unique_ptr<desktop::Session> m_session;
};

} // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  const std::string set = argv[4];
  if (set == "japanese") platform::setLanguage(platform::Language::Japanese);
  desktop::Application application(argc, argv, set == "dark" ? "dark" : "light");
  try {
    const Camera camera(QString::fromLocal8Bit(argv[3]));
    Shooting shooting(argv[1], QString::fromLocal8Bit(argv[2]), camera);
    if (set == "all")
      shooting.all();
    else
      shooting.single(set);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "pictures: %s\n", error.what());
    return 1;
  }
  return 0;
}
