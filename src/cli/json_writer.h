#pragma once
// The screen as one JSON object: every control's text and state, and the
// message boxes that the actions raised.
#include <string>

namespace qm {

class QuellmarkForm;
class RecordingPlatform;

std::string jsonEscape(const std::string& text);
/// `moreMembers`, when given, is ", \"name\": value..." added at the end.
std::string screenAsJson(const QuellmarkForm& form, const RecordingPlatform& platform,
                         const std::string& moreMembers = {});
/// One line "NAME = text" for every visible control that shows a text.
std::string screenAsText(const QuellmarkForm& form, const RecordingPlatform& platform);

} // namespace qm
