// FrmLogo: the product's logo, name and version. Any click closes it.
#pragma once

#include <QIcon>
#include <QWidget>

namespace vesk {

/// The logo at every size that a desktop asks for.
QIcon LogoIcon();

class FrmLogo : public QWidget {
  Q_OBJECT

 public:
  explicit FrmLogo(QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace vesk
