// SPDX-License-Identifier: MIT
// Reference counting and messages. [ui]
//
// A new object has a count of 1, which belongs to whoever made it; `remember` adds one, `forget` gives one back and
// deletes the object with the last.
#pragma once

#include <cstdint>
#include <cstring>
#include <utility>

namespace VSTGUI {

using IdStringPtr = const char*;

enum CMessageResult : std::int32_t { kMessageUnknown = 0, kMessageNotified = 1 };

extern const IdStringPtr kMsgTimer;       // from a CVSTGUITimer, at each period
extern const IdStringPtr kMsgLooseFocus;  // a text field was left; offered to the parent views from the nearest up

class CBaseObject {
 public:
  CBaseObject() = default;
  CBaseObject(const CBaseObject&) noexcept {}  // a copy is a new object
  CBaseObject& operator=(const CBaseObject&) noexcept { return *this; }
  virtual ~CBaseObject() = default;

  virtual void forget();
  virtual void remember() { ++nbReference_; }
  [[nodiscard]] virtual std::int32_t getNbReference() const { return nbReference_; }
  virtual CMessageResult notify(CBaseObject* sender, IdStringPtr message);
  // Runs before the destructor, while the whole object is still there.
  virtual void beforeDelete() {}
  // True for the name of the class and of each of its bases.
  [[nodiscard]] virtual bool isTypeOf(IdStringPtr name) const { return std::strcmp(name, "CBaseObject") == 0; }
  // An equal object of the same class with a count of 1; null where a copy makes no sense.
  [[nodiscard]] virtual CBaseObject* newCopy() const { return nullptr; }

 private:
  std::int32_t nbReference_ = 1;
};

// The two operations that name a class, for its public part.
#define VSTGUI_CLASS(Name, Base)                                         \
  [[nodiscard]] bool isTypeOf(VSTGUI::IdStringPtr name) const override { \
    return std::strcmp(name, #Name) == 0 || Base::isTypeOf(name);        \
  }
#define VSTGUI_CLASS_WITH_COPY(Name, Base) \
  VSTGUI_CLASS(Name, Base)                 \
  [[nodiscard]] VSTGUI::CBaseObject* newCopy() const override { return new Name(*this); }

// Holds one reference of an object. `Counted<T>(p)` adds a reference; `adopt(p)` takes over the caller's.
template <class T>
class Counted {
 public:
  Counted(T* object = nullptr) : object_(object) {  // NOLINT: implicit, as the plain pointer that it stands for
    if (object_) object_->remember();
  }
  Counted(const Counted& other) : Counted(other.object_) {}
  Counted(Counted&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Counted& operator=(Counted other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Counted() {
    if (object_) object_->forget();
  }
  [[nodiscard]] static Counted adopt(T* object) noexcept {
    Counted held;
    held.object_ = object;
    return held;
  }

  [[nodiscard]] T* get() const noexcept { return object_; }
  operator T*() const noexcept { return object_; }  // NOLINT: implicit, as the plain pointer that it stands for
  T* operator->() const noexcept { return object_; }

 private:
  T* object_;
};

}  // namespace VSTGUI
