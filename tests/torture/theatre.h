// One operation of the program on one folder, played again and again with a fault somewhere on its way.
#pragma once

#include <QByteArrayList>
#include <QString>

#include <span>

#include "torture/desk.h"
#include "torture/rig.h"
#include "torture/world.h"

namespace vesk::torture {

/// One operation. Each step gives an error's text; empty when it says that it is done.
struct Operation {
  const char* name;
  WorldKind kind;
  bool fresh;  ///< files as the logger left them, and an older read-out of one of them
  bool opens;  ///< the desk is opened and some work done before
  QString (*act)(Desk&, const Choice&);
};

/// Every operation that the parts play.
std::span<const Operation> Operations();

struct Found {
  QByteArray state;  ///< "" when the folder no longer loads
  QByteArray why;
};

/// The state as a fresh process finds it: screen and settings.
Found Look(const Choice& choice);

/// A fault to come: a call that fails or kills, or a disk that is full.
struct Fault {
  long nth = 0;
  int action = 0;
  bool stays = false;
  long bytes = -1;

  void Arm() const;
  [[nodiscard]] QByteArray Text() const;
};

/// One operation on one folder. The folder is made anew for every fault.
class Theatre {
 public:
  Theatre(Run& run, std::uint64_t seed, const Operation& operation);
  ~Theatre() { RemoveFolder(template_); }
  Theatre(const Theatre&) = delete;
  Theatre& operator=(const Theatre&) = delete;

  /// Plays it without a fault; learns the states before and after, and how many calls it needs.
  void Rehearse();
  [[nodiscard]] long Calls() const { return calls_; }
  /// Plays it with a fault and checks what a fresh process finds. goesOn: it is tried again without the fault
  /// first.
  void Play(const Fault& fault, bool goesOn);

 private:
  void AddOlderReadOut(World& world);
  Choice Copy();
  /// Saved corrections and unsaved ones, as a killed session leaves them.
  void LeaveWork(Random& random);
  [[nodiscard]] static QString Prepare(const Operation& operation, Desk& desk, const Choice& choice);
  QByteArray RehearseState(const Choice& choice, bool acts);
  void Act(const Choice& choice, const Fault& fault, bool goesOn, const Child::Say& say);
  void Check(const Choice& choice, const Fault& fault, const QByteArray& said, const QByteArray& met,
             bool wentOn);
  /// Every read-out is still there; a fresh one may be stamped and moved, nothing else.
  void CheckRawFiles(const Choice& choice, const Fault& fault, const QByteArray& met);
  void Break(const std::string& rule, const Fault& fault, const QByteArray& met, const QByteArray& detail);

  Run& run_;
  std::uint64_t seed_;
  const Operation& operation_;
  QString template_;
  Choice choice_;
  QByteArrayList raw_;
  QByteArray before_, after_, path_;
  long calls_ = 0;
};

}  // namespace vesk::torture
