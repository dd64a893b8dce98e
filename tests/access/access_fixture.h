#pragma once

#include <string>
#include <vector>

#include "access/session/process.h"
#include "support/test_platform.h"

namespace quintara::test {

constexpr int kCritical = 16;
constexpr int kWarning = 48;
constexpr int kCriticalModal = 4112;
constexpr int kQuestion = 4132;

/// A platform whose process has the names and texts that the operations under test use.
class AccessBench {
 public:
  AccessBench() {
    auto& globals = Process();
    globals.OBJECT_ID = "OBJECT_ID";
    globals.CLASS_ID = "CLASS_ID";
    globals.STATE = "STATE";
    globals.CAD_REF_FILE_NAME = "CAD_REF_FILE_NAME";
    globals.FILE_NAME = "FILE_NAME";
    globals.FILE_TYPE = "FILE_TYPE";
    globals.VAULT_OBJECT_ID = "VAULT_OBJECT_ID";
    globals.DIRECTORY = "DIRECTORY";
    globals.OPERATION_ID = "OPERATION_ID";
    globals.gAttrPartNumber = "NM_CN_PART_NUMBER";
    globals.gAttrId = "CN_ID";
    globals.gAttrDescription = "CN_DESCRIPTION";
    globals.gClassDocuments = "Document";
    globals.gClassDocLink = "Document Link";
    globals.gClassProducts = "ZORVA Product";
    globals.gFirstClassProducts = "ZORVA Product";
    auto& texts = globals.texts;
    texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    texts.COMMON_UTILS_MESSAGE_IS_EMPTY.text = "Nothing to say";
    texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY.text = "REP1 has no ids";
    texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY_2.text = "no class REP1";
    texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_NON_NUMERIC.text = "the ids of REP1 are no numbers";
    texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST.text = "no object of REP1";
    texts.QD_UTILS_UNABLE_TO_GET_NEXT_ID_SEQUENCE.text = "no next value of REP1";
    texts.QD_UTILS_UNCORRECT_STATE_FOR_LIFECYCLE.text = "wrong state:";
    texts.QD_UTILS_QUESTION_RECORD_POSITIONS.text = "record REP1?";
    texts.QD_UTILS_QUESTION_UPDATE_MATRIX.text = "update REP1?";
    texts.QD_UTILS_UTILS_ERROR_IN_ZORVA_SCRIPT.text = "no scripts";
  }

  const std::vector<Box>& Boxes() const { return platform.Boxes(); }

  TestPlatform platform;
};

/// A box of the catalogue.
inline Box Told(const std::string& text, int style) {
  return {text, style, "Quintara"};
}

/// The standard report.
inline Box Report(const std::string& label, const std::string& description) {
  return Told("Failure in " + label + ": " + description, kCritical);
}

}  // namespace quintara::test
