#pragma once

#include <array>
#include <string_view>

#include "app/messages.h"
#include "browser/messages.h"
#include "data/messages.h"
#include "engine/messages.h"
#include "netfile/messages.h"
#include "netgraph/messages.h"
#include "setup/messages.h"

namespace tarn {

// A message that a user can be shown and the test that provokes it and quotes its text.
struct MessageTest {
  std::string_view message;
  std::string_view test;  // "Suite.Test"; of a parameterized one "Instance/Suite.Test/Value"
};

// In the order of the modules' tables.
// clang-format off
inline constexpr auto kMessageTests = std::to_array<MessageTest>({
    // engine
    {kLayerCountOutOfRange, "CheckShape.RefusesAnyOtherLayerCount"},
    {kInputNodesInvalid, "CheckShape.RefusesALayerWithoutNodes"},
    {kOutputNodesInvalid, "CheckShape.RefusesALayerWithoutNodes"},
    {kHiddenNodesInvalid, "CheckShape.RefusesALayerWithoutNodes"},
    {kErrorHistoryWriteError, "ErrorHistoryTest.AnswersForAnExportThatCannotBeWritten"},
    {kTrainingStatus, "TrainingRunTiming.AlternatesTwoTextsWhileHalted"},
    {kAutoSaveStatus, "TrainingRunAutoSave.ShowsThatItStoresAndThatTrainingGoesOn"},
    {kTrainingComplete, "TrainingRunTest.IsCompleteAtMaxIterationsAndSaysSo"},
    {kTrainingStopped, "TrainingDeskTest.GoesOnCountingAfterStopAndStart"},
    {kHaltNotice, "TrainingRunTiming.AlternatesTwoTextsWhileHalted"},
    {kDivergedAt, "TrainingDeskTest.TellsThatARunHasDiverged"},
    {kHaltedStatus, "TrainingRunTiming.AlternatesTwoTextsWhileHalted"},

    // netfile
    {kNetFileNotFound, "HeaderFailure.OfAFileThatCanNeitherBeOpenedNorCreated"},
    {kNetFileNoAccess, "HeaderFailure.OfAFileWithoutAFirstLine"},
    {kNetFileNotTarn, "HeaderFailure.OfAFirstLineWithoutAKnownMagic"},
    {kTooManyLayers, "HeaderFailure.OfMoreThanTenLayersBeforeANodeCountIsRead"},
    {kBadUnits, "HeaderFailure.OfANodeCountThatDoesNotScan"},
    {kBadTransFunc, "HeaderFailure.OfATransferCodeThatDoesNotScan"},
    {kBadRates, "HeaderFailure.OfFewerThanFiveLearnRates"},
    {kBadMaxIterations, "HeaderFailure.OfAnIterationLimitThatIsNoNumber"},
    {kBadLrc, "HeaderFailure.OfALearnRateControlStartThatIsNoNumber"},
    {kBadSaveRate, "HeaderFailure.OfASaveRateThatIsNoNumberInTheVersionsWithoutAWeightRate"},
    {kBadSaveWeightRate, "HeaderFailure.OfASaveRateOrAWeightRateThatIsMissingFromVersion2On"},
    {kBadPatName, "HeaderFailure.OfAnInputFileNameThatComesOutEmpty"},
    {kBadPatCol, "HeaderFailure.OfAnInputColumnThatIsNoNumber"},
    {kBadNorm, "HeaderFailure.OfNormalizationFlagsThatAreNotTwoNumbers"},
    {kBadTargName, "HeaderFailure.OfATargetFileNameThatComesOutEmpty"},
    {kBadTargCol, "HeaderFailure.OfATargetColumnThatIsNoNumber"},
    {kBadOverMeth, "HeaderFailure.OfATestSetThatIsNotTwoNumbers"},
    {kBadTestRange, "HeaderFailure.OfATestRangeThatIsNotTwoNumbersInTheOldestVersion"},
    {kOpenNotFound, "OpenCheck.RefusesAMissingFileAndCreatesNone"},
    {kOpenNotTarn, "OpenCheck.RefusesAnyOtherFileAndLeavesTheNetworkAlone"},
    {kWeightsFallback, "WeightsReader.FallsBackToRandomWhenOneValueIsMissing"},
    {kOldWeightsFallback, "OldWeightsReader.FallsBackToRandomForEveryFailure"},
    {kConnectionsFallback, "ConnectionsReader.ConnectsFullyForAConnectionThatCannotBe"},
    {kSetupSaveNoOldFile, "SetupSave.IsAbortedWhenTheOldFileCannotBeOpened"},
    {kSetupSaveFailed, "SetupSave.FailsWhereNoFileCanBeMade"},
    {kNotReadBack, "Saving.AsksBeforeItWritesWhatCouldNotBeReadBack"},
    {kSaveFailed, "NetworkWriter.FailsWhereNoFileCanBeMade"},
    {kStoreNotCreated, "AutoSaveStore.TellsWhenItCannotBeCreated"},
    {kStoreNotFound, "AutoSaveStore.TellsWhenItIsNotFound"},
    {kRestoreWriteError, "AutoSaveStore.TellsWhenTheDestinationCannotBeMade"},
    {kNotRestored, "AutoSaveStore.LeavesTheDestinationAloneWhenNothingIsFound"},

    // data
    {kInputColumnInvalid, "DataSource.AnswersForAnInputColumnBelowOne"},
    {kTargetColumnInvalid, "DataSource.AnswersForATargetColumnBelowOne"},
    {kInputFileInvalid, "PatternCountTest.FailsWithoutTheInputFile"},
    {kInputFormatInvalid, "PatternCountTest.FailsForAnInputLineThatIsTooLong"},
    {kTargetFileInvalid, "PatternCountTest.FailsWithoutTheTargetFile"},
    {kTargetFormatInvalid, "PatternCountTest.FailsForATargetLineThatIsTooLong"},
    {kCountsNotEqual, "PatternCountTest.FailsWhenTheFilesDiffer"},
    {kDataFileEmpty, "PatternCountTest.FailsWithoutAnyRecord"},
    {kNoReadingBuffer, "PatternReadingTest.FailsWithABufferThatNoMemoryHolds"},
    {kInputFileBad, "PatternReadingTest.FailsWhenAFileIsGoneSinceTheCount"},
    {kTargetFileBad, "PatternReadingTest.FailsWhenAFileIsGoneSinceTheCount"},
    {kInputDataInsufficient, "PatternReadingTest.FailsAtARecordWithTooFewInputs"},
    {kTargetDataInsufficient, "PatternReadingTest.FailsAtARecordWithTooFewTargets"},
    {kRecordsInvalid, "PatternReadingTest.FailsWhenAFileHasFewerRecordsThanWereCounted"},
    {kNoDataPoints, "PatternReadingTest.FailsWithoutPatterns"},
    {kInputLimitsBad, "RecallNormalizationTest.FailsWithoutUsableInputLimits"},
    {kTargetLimitsBad, "RecallNormalizationTest.FailsWithoutUsableTargetLimits"},
    {kTestCountInvalid, "TestSetTest.TakesANegativeCountAsZero"},
    {kTrainSetChanged, "StoredTestSetTest.IsDrawnAnewWhenTheCountsHaveChanged"},
    {kTestSetInvalid, "StoredTestSetTest.IsDrawnAnewWhenANumberIsMissingOrOutOfRange"},
    {kTestSetRandom, "StoredTestSetTest.IsDrawnAnewForAnUnknownModeWord"},
    {kOutputsWriteError, "OutputsExportTest.FailsWhenTheFileCannotBeOpened"},

    // setup
    {kNetworkDesignError, "NetDesignDraft.ForcesALayerCountOutOfRangeToThreeAndStaysOpen"},
    {kErrorCaption, "ConnectionsButton.OpensForExistingHiddenLayersOnly"},
    {kInsufficientLayers, "ConnectionsButton.OpensForExistingHiddenLayersOnly"},
    {kConnectionEditorCaption, "ConnectionsDraftTest.IsCalledByItsTwoLayers"},
    {kConnectionText, "ConnectionsDraftTest.ListsEveryConnectionOfAFreshNetworkByReceivingNode"},
    {kConnectionsMemory, "ConnectionsDraftTest.TellsThatMemoryIsShortForCountsThatNoListHolds"},
    {kConnectionsNotKept, "ConnectionsDraftTest.LeavesFileAndMarkAsTheyWereWhenTheWriteFails"},
    {kTrainingParameterError, "TrainingParametersDraft.ShowsAllMessagesInOrderAndStoresWhatPasses"},
    {kFastPropRange, "TrainingParametersDraft.TakesFastPropFrom0To3"},
    {kMomentumRange, "TrainingParametersDraft.TakesMomentumFrom0To1"},
    {kEtaMaxRange, "TrainingParametersDraft.TakesLearnRatesAbove0To1"},
    {kEtaMinRange, "TrainingParametersDraft.TakesLearnRatesAbove0To1"},
    {kEtaRange, "TrainingParametersDraft.TakesLearnRatesAbove0To1"},
    {kUpdateRateRange, "TrainingParametersDraft.SetsAScreenUpdateRateOutOfRangeTo1AndCloses"},
    {kAutoSaveRateRange, "TrainingParametersDraft.TurnsAutoSaveOffForANegativeRateAndCloses"},
    {kLrcStartRange, "TrainingParametersDraft.WantsALearnRateControlStartAbove0"},
    {kMaxIterationsRange, "TrainingParametersDraft.WantsMaximumIterationsAbove0"},
    {kTrainingDataError, "TrainingDataDraftTest.SetsNegativeTestCasesToZeroAndCloses"},
    {kRecallDataError, "RecallDataDraftTest.RefusesAnInputColumnBelow1ButNotAnEmptyOne"},
    {kInputFileNotFound, "RecallDataDraftTest.ReportsMissingFilesOneByOneEvenWhenTheyAreTheSame"},
    {kTargetFileNotFound, "RecallDataDraftTest.ReportsMissingFilesOneByOneEvenWhenTheyAreTheSame"},
    {kScreenUpdateInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kAutoSaveInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kIterationsInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kPatternsInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kToleranceInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kToleranceMonitors, "OptionPromptsTest.AskWithTheirTexts"},
    {kFastPropInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kMomentumInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kEtaMaxInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kEtaMinInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kLearnRateInvalid, "OptionPromptsTest.AskWithTheirTexts"},
    {kInvalidRequest, "HandOverFile.MissingIsAnsweredWithAMessage"},
    {kNoHandOverFile, "HandOverFile.MissingIsAnsweredWithAMessage"},
    {kOptionWantsInteger, "SetupOptions.RefuseTextThatIsNoNumberForEveryNumericOption"},
    {kOptionWantsReal, "SetupOptions.RefuseTextThatIsNoNumberForEveryNumericOption"},
    {kOptionWantsSwitch, "SetupOptions.RefuseWordsThatAreNotKnown"},
    {kOptionWantsTestMethod, "SetupOptions.RefuseWordsThatAreNotKnown"},
    {kOptionWantsTransfer, "SetupOptions.RefuseTransferFunctionsThatDoNotFitTheLayers"},
    {kTransferNameCount, "SetupOptions.RefuseTransferFunctionsThatDoNotFitTheLayers"},

    // browser
    {kReportFileDenied, "ReportFileTest.AnswersForAFolderThatTakesNoFile"},
    {kReportUnreadable, "ReportTextTest.TellsThatAReportCannotBeRead"},
    {kSelectionTooLarge, "SelectedText.HasALimit"},
    {kLinesNotCopied, "ReportWindow.HasItsTexts"},
    {kReportNotSaved, "ReportWindow.HasItsTexts"},
    {kDivergedNodes, "DivergenceCheck.FindsNodesPinnedAtOneEnd"},
    {kNoDivergences, "DivergenceCheck.TellsThatThereIsNone"},

    // netgraph
    {kHistoryUnreadable, "HistoryPlots.AnswerWhenThereIsNoHistory"},
    {kInvalidZoomArea, "GraphViewZoom.RefusesARectangleThatIsNoArea"},
    {kTooFewInputs, "ContourSelection.NeedsTwoInputs"},
    {kContourMemory, "GraphRenderer.TellsThatMemoryIsShortForContours"},
    {kSingleHiddenNode, "NodeSelection.FindsNothingToCompareInAHiddenLayerOfOneNode"},
    {kGraphNotSaved, "GraphFile.StaysWhatItWasWhenItCannotBeWritten"},
    {kInputSelectionError, "ContourSelection.NeedsTwoDifferentInputs"},
    {kGraphNotCopied, "NetGraphMessages.OfTheWindowAreItsWords"},
    {kZoomHint, "NetGraphMessages.OfTheWindowAreItsWords"},
    {kBitmapDepth, "BitmapFile.IsRefusedOnADisplayOfMoreThan256Colours"},
    {kCopyInstead, "BitmapFile.IsRefusedOnADisplayOfMoreThan256Colours"},
    {kPictureSizeInvalid, "PictureSize.SaysWhatItMayBe"},
    {kPictureKindUnknown, "PictureKind.IsNoOther"},
    {kHiddenNodesProgress, "HiddenNodes.AreAnalyzedInSlicesOverTheWeightsOfTheBeginning"},
    {kInterrogatorProgress, "Interrogator.ShowsEveryTwentiethOfThePatterns"},
    {kContourProgress, "Contours.ShowEveryTwentiethOfTheRows"},

    // app
    {kSelectMode, "RunCheck.WantsAMode"},
    {kUntrainedRecall, "SessionRecall.RefusesAnUntrainedNetwork"},
    {kAskToSave, "Saving.AsksBeforeATrainedNetworkIsLeft"},
    {kAskAllTheSame, "Saving.AsksBeforeItWritesWhatCouldNotBeReadBack"},
    {kNoSnapshots, "TrainingDeskTest.TellsThatANameStandsInTheWayOfSnapshots"},
    {kAskToSaveLastSnapshot, "TrainingDeskTest.OffersTheLastSnapshotOfARunThatHasDiverged"},
    {kAskToTakeUp, "InterruptedRuns.GiveTheirNewestSnapshotBackAsAFile"},
    {kAskToTakeUpOlder, "InterruptedRuns.AskAlsoWhenTheFileHasBeenWrittenSince"},
    {kAskToReset, "TrainingDeskTest.ResetsTheWeightsWhenTheUserIsSure"},
    {kLoadHeader, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadCount, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadData, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadWeights, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadConnections, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadTestSet, "NetworkLoaderTest.NamesItsSteps"},
    {kLoadRecall, "NetworkLoaderTest.RunsTheRecallAtLast"},
    {kNoPreview, "ReportWindow.HasItsTexts"},
    {kNoTargets, "StudyDeskTest.HasNoUseForTargetsThatARecallHasNot"},
    {kAnalysisStopped, "StudyDeskTest.StopsATaskAndKeepsWhatWasShown"},
    {kEscapeStops, "StudyDeskTest.InterrogatesInputsInSlicesAndShowsHowFarItIs"},
});
// clang-format on

}  // namespace tarn
