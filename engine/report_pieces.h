#ifndef TESSARIL_ENGINE_REPORT_PIECES_H_
#define TESSARIL_ENGINE_REPORT_PIECES_H_

#include <string>
#include <string_view>

// The building blocks of the text report. They alone know how an entry looks; the workers share them.

namespace tessaril {

inline constexpr std::string_view kLabelFound = "*** Found:";
inline constexpr std::string_view kLabelKept = "--- Kept:";
inline constexpr std::string_view kLabelChanged = "*** Changed:";

/// The lines above the findings of one file.
void AppendFileHeader(std::string_view path, std::string& report);

/// A finding with its surroundings as they stand in the page.
void AppendEntry(std::string_view label, std::string_view context, std::string& report);

/// Below a changed entry: what the user made of the proposal.
void AppendManualChange(std::string_view edited, std::string& report);

/// A link that is not in order: what is wrong, and the page around it.
void AppendLinkError(std::string_view error, std::string_view excerpt, std::string& report);

/// Below an excerpt that the user corrected: what stands in its place now.
void AppendWasChanged(std::string_view text, std::string& report);

/// Below the last entry of a file in which the user stopped.
void AppendStopLine(std::string_view path, std::string& report);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_REPORT_PIECES_H_
