#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/Cls_SwitchToLWT.h"
#include "commands/Cls_SwitchToProduct.h"
#include "services/running_hosts.h"

namespace quintara::test {

/// Running hosts with an empty work in progress active, whose components are added from a vault of checked-in parts.
class SwitchingBench : public RunningHosts {
 public:
  using Product = Ref<zorva::Product>;

  SwitchingBench();

  /// A checked-in part with a file, and a light one unless told otherwise.
  Ref<VdObject> Add(const std::string& partNumber, bool hasLight = true);
  void SetState(const Ref<VdObject>& object, int state) const;

  /// Opens another product, makes it active and, unless told otherwise, a work in progress.
  void GivenWip(bool isMarked = true);
  /// Components of the work in progress, named "NUT.1" and moved to a place of their own.
  Product AddDocumentOf(const Ref<VdObject>& object);
  Product AddLight(const Ref<VdObject>& object);
  /// As if an assembly were loaded, one with this child.
  Product AddAssemblyWith(const std::string& path);
  static void Stamp(const Product& product, const std::string& type, const Ref<VdObject>& object);

  Ref<zorva::Selection> Selection() { return document->Selection(); }
  void Select(const std::vector<int>& children);
  void SelectAll();

  void SwitchToLwt() { Cls_SwitchToLWT().Run(); }
  void SwitchToProduct() { Cls_SwitchToProduct().Run(); }
  /// The same for what is shown meanwhile.
  std::vector<Box> BoxesOfSwitchToLwt();
  std::vector<Box> BoxesOfSwitchToProduct();
  /// The calls of a run, those of its start left out.
  std::vector<std::string> CallsOfSwitchToLwt();
  std::vector<std::string> CallsOfSwitchToProduct();
  /// Those of them that the CAD host got.
  static std::vector<std::string> OfZorva(std::vector<std::string> calls);

  int Count() { return root->Products()->Count(); }
  Product Child(int index) { return root->Products()->Item(index); }
  /// For each component its instance name and the name of its file, and what it is stamped with, if anything:
  /// "NUT.1 NUT.lwt LWT 7:12".
  std::vector<std::string> Components();
  static std::string FileOf(const Product& component);
  static std::string Property(const Product& product, const std::string& name);
  static std::string IdOf(const Ref<VdObject>& object);
  /// What `Components` tells of a component of this object.
  static std::string AsDocument(const std::string& partNumber);
  static std::string AsLight(const Ref<VdObject>& object);

  Ref<zorva::ProductDocument> document;
  Product root;

 private:
  Product AddFile(const std::string& path);
  template <class Command>
  std::vector<Box> BoxesOf();
  template <class Command>
  std::vector<std::string> CallsOf();
};

}  // namespace quintara::test
