#include <algorithm>

#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using OrderOfCalls = WipTest;

TEST_F(OrderOfCalls, OfRetrieveFromXml) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  const auto calls = CallsOfHosts([&] { Retrieve(); });

  ExpectedCalls expected;
  expected.Add({"Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product"});
  expected.Add({"Product.Parameters", "Parameters.Count", "Parameters.Item(WIP)", "Parameter.ValueAsString"});
  expected.Add(
      {"Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product", "Product.Products"});
  expected.Add({"Product.PartNumber", "Product.PartNumber"});  // the root's
  for (const auto* property : {"Parameters.Item(DocXMLCID)", "Parameters.Item(DocXMLOID)"}) {
    expected.Add({"Product.Parameters", "Parameters.Count", property, "Parameter.ValueAsString"});
  }
  // What the matrix does.
  expected.Add({"Product.Products", "Products.Count"});
  for (int i = 0; i < 2; ++i) expected.Add({"Products.Item(1)", "Product.PartNumber", "Product.PartNumber"});
  expected.Add({"Product.Position", "Position.SetComponents"});
  expected.Add({"Application.ActiveWindow", "Window.ActiveViewer", "Viewer.RefreshView"});
  EXPECT_THAT(calls, testing::ElementsAreArray(expected.calls));
}

TEST_F(OrderOfCalls, OfRetrieveFromAWorkbook) {
  GivenWip({"BOLT", "BOLT"});
  Child(2)->SetName("B.2");
  GivenWorkbook({"R", "R", At(0), {{"BOLT", "B.1", At(5), {}}, {"BOLT", "B.2", At(6), {}}}});

  auto calls = CallsOfHosts([&] { Retrieve(); });

  calls.erase(calls.begin(), std::ranges::find(calls, "Platform.Create(Excel.Application)"));
  ExpectedCalls expected;
  expected.Add({"Platform.Create(Excel.Application)", "ExcelApplication.Visible=(False)", "ExcelApplication.Workbooks",
                "Workbooks.Open(PLANT Matrix.xls)", "ExcelApplication.ActiveWorkbook", "Workbook.Worksheets",
                "Worksheets.Item(1)", "Worksheets.Item(2)", "Products.Count"});
  for (const auto* component : {"Products.Item(1)", "Products.Item(2)"}) {
    expected.Add({component, "Product.PartNumber", "Product.PartNumber", "Product.PartNumber"});
    expected.Read(2, 1, 1);
    for (const int row : {2, 3}) {
      expected.Read(2, row, 1);
      for (const int column : {4, 3, 2}) expected.Read(2, row, column);
    }
    expected.Read(2, 4, 1);
    // No component is named B.1; the second one is named B.2.
    for (int i = 0; i < 2; ++i) {
      expected.Add({"Product.PartNumber", "Products.Count", "Products.Item(1)", "Product.PartNumber", "Product.Name",
                    "Products.Item(2)", "Product.PartNumber", "Product.Name"});
    }
    expected.Add({"Products.Item(2)"});
    expected.ReadPosition(3);
    expected.ReadUpward(3, 1);
    expected.ReadPosition(1);
    expected.Add({"Product.Position", "Position.SetComponents"});
  }
  expected.Add({"Workbook.Save", "Workbook.Close(False)", "ExcelApplication.Quit", "Application.ActiveWindow",
                "Window.ActiveViewer", "Viewer.RefreshView"});
  EXPECT_THAT(calls, testing::ElementsAreArray(expected.calls));
}

TEST_F(OrderOfCalls, OfAllInstancesFromXml) {
  GivenWip({"A"});
  GivenXmlMatrix({"R", "R", At(0), {{"A", "A.1", At(5), {}}, {"A", "A.2", At(6), {}}}});
  Process().gAllInstancesRequested = true;

  const auto calls = CallsOfHosts([&] { PlaceAll(); });

  ExpectedCalls expected;
  expected.Add({"Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product",
                "Product.Products", "Document.Selection", "Products.Count"});
  for (const auto* property : {"Parameters.Item(DocXMLCID)", "Parameters.Item(DocXMLOID)", "Parameters.Item(WIP)"}) {
    expected.Add({"Product.Parameters", "Parameters.Count", property, "Parameter.ValueAsString"});
  }
  // What the matrix does.
  expected.Add({"Product.Products", "Products.Count"});
  for (int i = 0; i < 3; ++i) expected.Add({"Products.Item(1)", "Product.PartNumber", "Product.PartNumber"});
  expected.Add({"Selection.Clear", "Selection.Add", "Selection.Copy", "Selection.Clear", "Product.Name=(R\\A.1)",
                "Product.Position", "Position.SetComponents"});
  expected.Add({"Product.Products", "Selection.Add", "Selection.Paste", "Selection.Clear", "Products.Item(2)",
                "Product.Name=(R\\A.2)", "Product.Position", "Position.SetComponents"});
  EXPECT_THAT(calls, testing::ElementsAreArray(expected.calls));
}

TEST_F(OrderOfCalls, OfAllInstancesFromAWorkbook) {
  GivenWip({"A"});
  GivenWorkbook({"R", "R", At(0), {{"A", "A.1", At(5), {}}, {"A", "A.2", At(6), {}}}});
  Process().gAllInstancesRequested = true;

  const auto calls = CallsOfHosts([&] { PlaceAll(); });

  ExpectedCalls expected;
  expected.Add({"Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product",
                "Product.Products", "Document.Selection", "Products.Count"});
  for (const auto* property : {"Parameters.Item(DocXMLCID)", "Parameters.Item(DocXMLOID)"}) {
    expected.Add({"Product.Parameters", "Parameters.Count", property});
  }
  for (const auto* property :
       {"Parameters.Item(DocExcelCID)", "Parameters.Item(DocExcelOID)", "Parameters.Item(WIP)"}) {
    expected.Add({"Product.Parameters", "Parameters.Count", property, "Parameter.ValueAsString"});
  }
  expected.Add({"Platform.Create(Excel.Application)", "ExcelApplication.Visible=(False)", "ExcelApplication.Workbooks",
                "Workbooks.Open(PLANT Matrix.xls)", "ExcelApplication.ActiveWorkbook", "Workbook.Worksheets",
                "Worksheets.Item(1)", "Worksheets.Item(2)"});
  expected.Read(2, 1, 4);
  expected.Add({"Products.Item(1)", "Product.PartNumber", "Product.PartNumber"});  // the list of part numbers
  expected.Add({"Products.Item(1)", "Product.PartNumber", "Product.PartNumber"});
  expected.Read(2, 1, 1);
  for (const int row : {2, 3}) {
    expected.Read(2, row, 1);
    for (const int column : {4, 3, 2}) expected.Read(2, row, column);
    expected.ReadUpward(row, 1);
  }
  expected.Read(2, 4, 1);
  expected.ReadPosition(2);
  expected.ReadUpward(2, 1);
  expected.ReadPosition(1);
  expected.Add({"Selection.Clear", "Selection.Add", "Selection.Copy", "Selection.Clear", "Product.Name=(A.1)",
                "Product.Position", "Position.SetComponents"});
  expected.ReadPosition(3);
  expected.ReadUpward(3, 1);
  expected.ReadPosition(1);
  expected.Add({"Selection.Add", "Selection.Paste", "Selection.Clear", "Products.Item(2)", "Product.Name=(A.2)",
                "Product.Position", "Position.SetComponents"});
  expected.Add({"Workbook.Save", "Workbook.Close(False)", "ExcelApplication.Quit"});
  EXPECT_THAT(calls, testing::ElementsAreArray(expected.calls));
}

}  // namespace
}  // namespace quintara::test
