#pragma once
// Reading and filling the fields of a page: the element walks behind the
// automatic login ("pw"), the field filling ("ip") and the page capture.
// They run on any PageDocument, whichever browser stands behind it.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sys/clock_port.h"
#include "sys/document_port.h"

namespace kx {

// The pairs of a field list: split on " / ", or on "/" when that gives a
// single piece.
std::vector<std::string> SplitPagePairs(std::string_view pairs);

// A checkbox value read as a Boolean: "True"/"False" in any case, or a
// number (true when not zero); none for anything else.
std::optional<bool> PageBoolean(std::string_view value);

// Automatic login: every password box gets `password` and the last input
// box before it `user` (each only when not empty); then the form of the last
// password box is sent. Nothing happens on a page without a password box.
void AutoLogin(PageDocument& document, std::string_view user, std::string_view password);

// Fills the named fields of each "name=value" pair: hidden fields are
// skipped, checkboxes take the value as a Boolean (a value that is none is
// skipped), other fields take the value with each "\n" made a line break.
// Then, when `form` is a number, the form of that index is submitted.
void FillPageFields(PageDocument& document, std::string_view pairs, std::string_view form);

// Waits until the document reads "complete", pumping messages and sleeping
// 10 ms between reads. False when the play was stopped (`playing` cleared)
// or the document has gone.
bool WaitPageComplete(PageDocument& document, ClockPort& clock, const bool& playing);

// The page's fields as a pair list for an "IP" line: named text, password
// and checkbox inputs, selects and text areas, as name=value joined by
// " / "; a checkbox gives its checked state, a text area's line breaks are
// written as "\n". None when the document has gone or has no such field.
std::optional<std::string> CapturePageFields(PageDocument& document);

}  // namespace kx
