#include "shell/frm_logo.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QSvgRenderer>
#include <QVBoxLayout>

/// The library is static: its resources are there once somebody has asked for them.
static void LoadResources() {
  Q_INIT_RESOURCE(vesk4);
}

namespace vesk {
namespace {

QString LogoFile() {
  LoadResources();
  return QStringLiteral(":/vesk4/logo.svg");
}

/// The logo as vectors, as large as its place allows.
class LogoPicture : public QWidget {
 public:
  explicit LogoPicture(QWidget* parent) : QWidget(parent), renderer_(new QSvgRenderer(LogoFile(), this)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(160, 160);
  }
  [[nodiscard]] QSize sizeHint() const override { return {200, 200}; }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const int side = std::min(width(), height());
    renderer_->render(&painter, QRectF((width() - side) / 2.0, (height() - side) / 2.0, side, side));
  }

 private:
  QSvgRenderer* renderer_;
};

QLabel* MakeLabel(const QString& name, const QString& text, double relativeSize, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setAlignment(Qt::AlignCenter);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * relativeSize);
  font.setBold(relativeSize > 1.5);
  label->setFont(font);
  return label;
}

}  // namespace

QIcon LogoIcon() {
  QSvgRenderer renderer(LogoFile());
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

FrmLogo::FrmLogo(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("FrmLogo"));
  setWindowTitle(QStringLiteral("Logo"));
  setWindowIcon(LogoIcon());
  setFocusPolicy(Qt::StrongFocus);
  auto* picture = new LogoPicture(this);
  picture->setObjectName(QStringLiteral("Image1"));
  picture->setAccessibleName(QStringLiteral("Logo"));
  picture->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 20, 32, 20);
  layout->addWidget(picture, 1);
  layout->addWidget(MakeLabel(QStringLiteral("Label1"), QStringLiteral("Vesk-4 "), 2.4, this));
  layout->addWidget(MakeLabel(QStringLiteral("Label2"), QStringLiteral("Ver 2007.2209-11"), 1.0, this));
}

bool FrmLogo::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonPress) return QWidget::eventFilter(watched, event);
  close();
  return true;
}

void FrmLogo::mouseReleaseEvent(QMouseEvent* /*event*/) {
  close();
}

void FrmLogo::keyPressEvent(QKeyEvent* event) {
  const bool leaves = event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return ||
                      event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
  if (leaves) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace vesk
