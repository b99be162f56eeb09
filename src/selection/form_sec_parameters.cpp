// The right column of the selection window: what is known of the choice.
#include <QHBoxLayout>
#include <QSplitter>

#include "selection/changed_rows_list.h"
#include "selection/form_sec_parts.h"
#include "selection/message_list.h"
#include "selection/setup_table.h"

namespace vesk {
namespace {

class RightColumnMaker : public FormSecPart {
 public:
  using FormSecPart::FormSecPart;

  QWidget* RightColumn() {
    c_.rightParts = Named(new QSplitter(Qt::Vertical, &parent_), "RightParts");
    c_.rightParts->addWidget(SetupParameters());
    c_.rightParts->addWidget(LoadedFiles());
    auto* title = Named(new QLabel(Say(Wording{u"Açıklamalar", u"Messages"}), &parent_), "Label10");
    c_.messages = new MessageList(language_, &parent_);
    c_.rightParts->addWidget(Titled(title, c_.messages));
    c_.rightParts->setStretchFactor(0, 3);
    c_.rightParts->setStretchFactor(1, 1);
    c_.rightParts->setStretchFactor(2, 1);
    c_.parameters = c_.rightParts;
    c_.parameters->setMinimumWidth(4030 / kTwipsPerPixel);
    return c_.parameters;
  }

 private:
  QWidget* SetupParameters() {
    auto* title =
        Named(new QLabel(Text(u"SET-UP PARAMETRELERİ", Caption::SetupParameters), &parent_), "Label4");
    c_.setup = new SetupTable(&parent_);
    return Titled(title, c_.setup);
  }

  QWidget* LoadedFiles() {
    c_.loadedFiles = Table("VS_Dosyalar", 0, 1);
    c_.loadedFiles->setHorizontalHeaderLabels({Say(Wording{u"Yüklenen dosyalar", u"Loaded files"})});
    c_.changedRows = new ChangedRowsList(&parent_);
    QWidget* changed = Titled(new QLabel(Say(Wording{u"Satir No", u"Row no."}), &parent_), c_.changedRows);
    changed->setMaximumWidth(90);
    c_.changedPart = changed;
    c_.loadedPart = new QWidget(&parent_);
    auto* row = new QHBoxLayout(c_.loadedPart);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(c_.loadedFiles, 1);
    row->addWidget(changed);
    return c_.loadedPart;
  }
};

}  // namespace

QWidget* MakeParameterColumn(QWidget& form, const Language& language, FormSecControls& controls) {
  return RightColumnMaker(form, language, controls).RightColumn();
}

}  // namespace vesk
