#pragma once

#include <array>
#include <string_view>

#include "data/messages.h"

// The texts and captions of the dialogs that set a network up, and the answers to setup
// options that cannot be understood. Those with a format are completed by fmt::sprintf. The
// texts about layer and node counts are the engine's, those about start columns and test
// cases are the data module's.

namespace tarn {

inline constexpr std::string_view kNetworkDesignError = "Network Design Error";
inline constexpr std::string_view kErrorCaption = "Error";
inline constexpr std::string_view kInsufficientLayers = "Insufficient layers for this option";

inline constexpr std::string_view kConnectionEditorCaption =
    "Connection Editor: From Layer %d to Layer %d";
inline constexpr std::string_view kConnectionText = "From L%d N%d to L%d N%d";
inline constexpr std::string_view kConnectionsMemory =
    "Memory insufficient for allocation of connections";
inline constexpr std::string_view kConnectionsNotKept =
    "The connections could not be written into the temporary folder";

inline constexpr std::string_view kTrainingParameterError = "Training Parameter Error";
inline constexpr std::string_view kFastPropRange = "Fast-Prop coefficient range is 0. to 3.";
inline constexpr std::string_view kMomentumRange = "Momentum factor range is 0. to 1.";
inline constexpr std::string_view kEtaMaxRange = "Learn rate maximum range is >0. to 1.";
inline constexpr std::string_view kEtaMinRange = "Learn rate minimum range is >0. to 1.";
inline constexpr std::string_view kEtaRange = "Learn rate range is >0. to 1.";
inline constexpr std::string_view kUpdateRateRange = "Screen update rate out of range; set to 1";
inline constexpr std::string_view kAutoSaveRateRange =
    "AutoSave rate out of range; feature disabled";
inline constexpr std::string_view kLrcStartRange = "Learn rate control out of range (>0)";
inline constexpr std::string_view kMaxIterationsRange = "Maximum iterations out of range (>0)";

// Answers of the option prompts; that of the tolerance has a caption of its own.
inline constexpr std::string_view kScreenUpdateInvalid = "Screen Update Rate Invalid";
inline constexpr std::string_view kAutoSaveInvalid = "AutoSave Rate Invalid";
inline constexpr std::string_view kIterationsInvalid = "Iteration Value Invalid";
inline constexpr std::string_view kPatternsInvalid = "Pats per Iterations Invalid";
inline constexpr std::string_view kToleranceInvalid = "Tolerance Value Invalid";
inline constexpr std::string_view kToleranceMonitors = "Tolerance Monitors";
inline constexpr std::string_view kFastPropInvalid = "Fast-Prop Coef Invalid";
inline constexpr std::string_view kMomentumInvalid = "Momentum Factor Invalid";
inline constexpr std::string_view kEtaMaxInvalid = "LRC Max Eta Invalid";
inline constexpr std::string_view kEtaMinInvalid = "LRC Min Eta Invalid";
inline constexpr std::string_view kLearnRateInvalid = "Learn Rate Eta Invalid";

inline constexpr std::string_view kTrainingDataError = "Training Data Error";
inline constexpr std::string_view kRecallDataError = "Recall Data Error";
inline constexpr std::string_view kInputFileNotFound = "Input node data file not found";
inline constexpr std::string_view kTargetFileNotFound = "Target node data file not found";

inline constexpr std::string_view kInvalidRequest = "Invalid Tarn Request";
inline constexpr std::string_view kNoHandOverFile = "No file saved durring Tabulo session!";

inline constexpr std::string_view kOptionWantsInteger = "--%s takes a whole number, not \"%s\"";
inline constexpr std::string_view kOptionWantsReal = "--%s takes a number, not \"%s\"";
inline constexpr std::string_view kOptionWantsSwitch = "--%s takes on or off, not \"%s\"";
inline constexpr std::string_view kOptionWantsTestMethod =
    "--%s takes none, beginning, end or random, not \"%s\"";
inline constexpr std::string_view kOptionWantsTransfer =
    "--%s takes sigmoid, gaussian, tanh or sech, not \"%s\"";
inline constexpr std::string_view kTransferNameCount =
    "--transfer takes one name, or one for each of the %d layers above the input layer, not %d";

inline constexpr std::array kSetupMessages = {kNetworkDesignError,
                                              kErrorCaption,
                                              kInsufficientLayers,
                                              kTrainingParameterError,
                                              kFastPropRange,
                                              kMomentumRange,
                                              kEtaMaxRange,
                                              kEtaMinRange,
                                              kEtaRange,
                                              kUpdateRateRange,
                                              kAutoSaveRateRange,
                                              kLrcStartRange,
                                              kMaxIterationsRange,
                                              kTrainingDataError,
                                              kRecallDataError,
                                              kInputFileNotFound,
                                              kTargetFileNotFound,
                                              kInvalidRequest,
                                              kNoHandOverFile,
                                              kOptionWantsInteger,
                                              kOptionWantsReal,
                                              kOptionWantsSwitch,
                                              kOptionWantsTestMethod,
                                              kOptionWantsTransfer,
                                              kTransferNameCount,
                                              kScreenUpdateInvalid,
                                              kAutoSaveInvalid,
                                              kIterationsInvalid,
                                              kPatternsInvalid,
                                              kToleranceInvalid,
                                              kToleranceMonitors,
                                              kFastPropInvalid,
                                              kMomentumInvalid,
                                              kEtaMaxInvalid,
                                              kEtaMinInvalid,
                                              kLearnRateInvalid,
                                              kConnectionEditorCaption,
                                              kConnectionText,
                                              kConnectionsMemory,
                                              kConnectionsNotKept};

}  // namespace tarn
