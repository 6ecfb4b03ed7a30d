#pragma once

#include <array>
#include <string_view>

namespace tarn {

inline constexpr std::string_view kHistoryUnreadable = "The error history cannot be read";
inline constexpr std::string_view kInvalidZoomArea = "Define Zoom Area TOP/LEFT to BOTTOM/RIGHT";
inline constexpr std::string_view kTooFewInputs = "Requires at least two inputs - aborting!";
inline constexpr std::string_view kInputSelectionError = "Input node selection error - aborting!";
inline constexpr std::string_view kContourMemory = "Memory Error generating Contours";
inline constexpr std::string_view kSingleHiddenNode =
    "Hidden layer %d has a single node: there is nothing to compare";
inline constexpr std::string_view kGraphNotSaved = "The graph cannot be written";
inline constexpr std::string_view kGraphNotCopied = "The graph cannot be copied";
inline constexpr std::string_view kBitmapDepth =
    "Display mode error: 256 color mode maximum under Tarn!";
inline constexpr std::string_view kCopyInstead = "Copy graph to clipboard instead?";
// Completed by the limits.
inline constexpr std::string_view kPictureSizeInvalid =
    "The size of a picture is two numbers from %s to %s";
inline constexpr std::string_view kPictureKindUnknown =
    "A picture is PNG or SVG: its name has to end in .png or .svg";

// Texts of the status line, completed by the percentage.
inline constexpr std::string_view kHiddenNodesProgress = "Hidden Nodes/Patterns Processed %d%%";
inline constexpr std::string_view kInterrogatorProgress = "Inputs/Patterns Processed %d%%";
inline constexpr std::string_view kContourProgress = "Contours Processed %d%%";

// The status line in zoom mode.
inline constexpr std::string_view kZoomHint = "Drag from TOP/LEFT to BOTTOM/RIGHT";

inline constexpr std::array kNetGraphMessages = {
    kHistoryUnreadable,   kInvalidZoomArea,      kTooFewInputs,       kInputSelectionError,
    kContourMemory,       kSingleHiddenNode,     kGraphNotSaved,      kGraphNotCopied,
    kBitmapDepth,         kCopyInstead,          kPictureSizeInvalid, kPictureKindUnknown,
    kHiddenNodesProgress, kInterrogatorProgress, kContourProgress,    kZoomHint};

// Captions of the message boxes.
inline constexpr std::string_view kInvalidZoomCaption = "Invalid Zoom Area";
inline constexpr std::string_view kContourCaption = "Tarn Contour Plot";
inline constexpr std::string_view kNetGraphErrorCaption = "NetGraph Error";

inline constexpr std::string_view kBitmapSaveCaption = "Bitmap Save Error";

// The window that shows a graph.
inline constexpr std::string_view kNetGraphCaption = "NetGraph";
inline constexpr std::string_view kPictureSizeCaption = "Export Picture";
inline constexpr std::string_view kPictureSizePrompt = "Width x Height in pixels:";

}  // namespace tarn
