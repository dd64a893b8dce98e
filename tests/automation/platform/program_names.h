#pragma once

#include <functional>
#include <string>

#include "access/contracts/any_object.h"
#include "automation/dispatch/com.h"

namespace quintara::test {

/// A program name that leads to a class, registered for as long as this lives. A name that is registered already stays
/// so, with the class that it leads to.
class ProgramName {
 public:
  explicit ProgramName(std::string name);
  ~ProgramName();
  ProgramName(const ProgramName&) = delete;
  ProgramName& operator=(const ProgramName&) = delete;

  const std::string& Name() const { return name_; }
  const CLSID& Class() const { return class_; }
  /// The class's id as text, in braces.
  std::string ClassText() const;

 private:
  std::string name_;
  CLSID class_{};
  HKEY root_ = nullptr;  ///< where it was written; nothing if it wasn't
};

/// Makes an object the running one of a class, for as long as this lives.
class Running {
 public:
  Running(const ProgramName& name, IUnknown* object);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  DWORD handle_ = 0;
};

/// Makes objects of a class in this process, for as long as this lives. `make` answers as the system's `CreateInstance`
/// does, with the interface that was asked for.
class Factory final : public IClassFactory {
 public:
  using Maker = std::function<HRESULT(REFIID kind, void** given)>;

  Factory(const CLSID& id, Maker make);
  ~Factory();
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  int Made() const { return made_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID kind, void** given) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // it stands on the test's stack
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID kind, void** given) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }

 private:
  Maker make_;
  int made_ = 0;
  DWORD handle_ = 0;
};

/// A maker of one object of ours.
Factory::Maker Making(const Ref<AnyObject>& object);

/// An object that knows no interface but that which all have, and refuses every other one with a result.
class Mute final : public IUnknown {
 public:
  explicit Mute(HRESULT refusal = E_NOINTERFACE) : refusal_(refusal) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID kind, void** given) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

 private:
  HRESULT refusal_;
};

}  // namespace quintara::test
