#pragma once

#include <cstdint>
#include <string_view>

namespace tamarind {

// Numbers of the visible texts that code asks for by name. Menus and dialogs have numbers in tables
// of their own. Numbers from 4001 on are additions that older language files lack.
namespace text {
inline constexpr std::uint16_t kNoRecentFiles = 108;
inline constexpr std::uint16_t kClearList = 109;
inline constexpr std::uint16_t kFavoriteNotFound = 204;
inline constexpr std::uint16_t kTooManyFavorites = 207;
inline constexpr std::uint16_t kIsFavoriteAlready = 208;
inline constexpr std::uint16_t kCannotFind = 259;
inline constexpr std::uint16_t kAreYouSure = 3009;
inline constexpr std::uint16_t kSaveChangesTo = 3020;
inline constexpr std::uint16_t kCannotFindFile = 3021;
inline constexpr std::uint16_t kVerifyPath = 3022;
inline constexpr std::uint16_t kCannotFindWcxFtpIni = 3045;
inline constexpr std::uint16_t kCannotFindWincmdIni = 3046;
inline constexpr std::uint16_t kCannotFindLanguageFile = 3048;
inline constexpr std::uint16_t kFileNotFound = 3056;
inline constexpr std::uint16_t kRootCategory = 3073;
inline constexpr std::uint16_t kCannotFindDataFile = 3074;
inline constexpr std::uint16_t kCategoryWithoutKeys = 3075;
inline constexpr std::uint16_t kSaveDataFile = 3076;
inline constexpr std::uint16_t kKeys = 3077;
inline constexpr std::uint16_t kDataFile = 3078;
inline constexpr std::uint16_t kTargetSection = 3079;
inline constexpr std::uint16_t kNoDescription = 3080;
inline constexpr std::uint16_t kCannotReadFile = 4001;
inline constexpr std::uint16_t kTooManyKeys = 4002;
inline constexpr std::uint16_t kReasonNotFound = 4003;
inline constexpr std::uint16_t kReasonFolder = 4004;
inline constexpr std::uint16_t kReasonAccessDenied = 4005;
inline constexpr std::uint16_t kReasonInUse = 4006;
inline constexpr std::uint16_t kReasonTooLarge = 4007;
inline constexpr std::uint16_t kReasonOther = 4008;
inline constexpr std::uint16_t kCannotSaveFile = 4009;
inline constexpr std::uint16_t kReasonReadOnly = 4010;
inline constexpr std::uint16_t kReasonDiskFull = 4011;
inline constexpr std::uint16_t kNameNotEncodable = 4012;
inline constexpr std::uint16_t kTextNotStorable = 4013;
inline constexpr std::uint16_t kNoSettingsFile = 4014;
inline constexpr std::uint16_t kValueTooLong = 4015;
inline constexpr std::uint16_t kExport = 4016;
inline constexpr std::uint16_t kImport = 4017;
inline constexpr std::uint16_t kDataFileChanged = 4018;
inline constexpr std::uint16_t kRestored = 4031;
inline constexpr std::uint16_t kTotalCommanderStillRuns = 4039;
inline constexpr std::uint16_t kCannotSaveFiles = 4040;
inline constexpr std::uint16_t kRedirectionLoop = 4041;
inline constexpr std::uint16_t kReasonNotVerified = 4043;
inline constexpr std::uint16_t kFileNotText = 4045;
inline constexpr std::uint16_t kQuoteInPath = 4046;
inline constexpr std::uint16_t kFavoritesTooLong = 4047;
inline constexpr std::uint16_t kReasonUnreachable = 4050;
inline constexpr std::uint16_t kReasonBadName = 4051;
inline constexpr std::uint16_t kReasonKeepsChanging = 4052;
inline constexpr std::uint16_t kTextKeptIn = 4053;
inline constexpr std::uint16_t kSettingsGone = 4054;
inline constexpr std::uint16_t kMakeFileAnew = 4055;
inline constexpr std::uint16_t kUnsavedChanges = 4056;
inline constexpr std::uint16_t kLongValueStays = 4057;
inline constexpr std::uint16_t kLongValuesSkipped = 4058;
inline constexpr std::uint16_t kValueIsMarker = 4059;
inline constexpr std::uint16_t kKey = 4044;
inline constexpr std::uint16_t kNothingExported = 4070;
inline constexpr std::uint16_t kNow = 4029;
inline constexpr std::uint16_t kSection = 4062;
inline constexpr std::uint16_t kInTheFile = 4063;
inline constexpr std::uint16_t kWillBeWritten = 4064;
inline constexpr std::uint16_t kAsInFile = 4065;
inline constexpr std::uint16_t kNothingPending = 4073;
inline constexpr std::uint16_t kOneChange = 4074;
inline constexpr std::uint16_t kChanges = 4075;
inline constexpr std::uint16_t kOneKeySaved = 4076;
inline constexpr std::uint16_t kKeysSaved = 4077;
inline constexpr std::uint16_t kBackupMade = 4078;
inline constexpr std::uint16_t kTotalCommanderWillOverwrite = 4079;
inline constexpr std::uint16_t kRestartTotalCommander = 4080;
inline constexpr std::uint16_t kStepOfValue = 4081;
inline constexpr std::uint16_t kStepOfComment = 4082;
inline constexpr std::uint16_t kStepOfDeletion = 4083;
inline constexpr std::uint16_t kStepOfReset = 4084;
inline constexpr std::uint16_t kStepOfImport = 4085;
inline constexpr std::uint16_t kStepOfDiscard = 4086;
inline constexpr std::uint16_t kStepOfRestore = 4087;
inline constexpr std::uint16_t kSeveralKeys = 4088;
inline constexpr std::uint16_t kAskReset = 4091;
inline constexpr std::uint16_t kChangedAndLeftOut = 4092;
inline constexpr std::uint16_t kNothingToReset = 4093;
inline constexpr std::uint16_t kAfter = 4099;
inline constexpr std::uint16_t kImportSets = 4100;
inline constexpr std::uint16_t kImportComments = 4101;
inline constexpr std::uint16_t kNotInThisFile = 4102;
inline constexpr std::uint16_t kRemoveThemToo = 4103;
inline constexpr std::uint16_t kState = 4107;
inline constexpr std::uint16_t kDefault = 4108;
inline constexpr std::uint16_t kMeaning = 4109;
inline constexpr std::uint16_t kCategory = 4110;
inline constexpr std::uint16_t kNotSet = 4111;
inline constexpr std::uint16_t kSet = 4112;
inline constexpr std::uint16_t kSetToDefault = 4113;
inline constexpr std::uint16_t kCommentedOut = 4114;
inline constexpr std::uint16_t kChanged = 4115;
inline constexpr std::uint16_t kDefaultIs = 4116;
inline constexpr std::uint16_t kChoiceIsDefault = 4117;
inline constexpr std::uint16_t kChoiceNotSet = 4118;
inline constexpr std::uint16_t kResetValue = 4119;
inline constexpr std::uint16_t kOtherBits = 4120;
inline constexpr std::uint16_t kExpected = 4121;
inline constexpr std::uint16_t kExpectOneOf = 4122;
inline constexpr std::uint16_t kExpectSum = 4123;
inline constexpr std::uint16_t kExpectOneInSum = 4124;
inline constexpr std::uint16_t kExpectNumber = 4125;
inline constexpr std::uint16_t kExpectNumberBetween = 4126;
inline constexpr std::uint16_t kExpectNumberFrom = 4127;
inline constexpr std::uint16_t kExpectNumberUpTo = 4128;
inline constexpr std::uint16_t kExpectEither = 4129;
inline constexpr std::uint16_t kExpectColor = 4130;
inline constexpr std::uint16_t kNoSuchPlace = 4131;
inline constexpr std::uint16_t kAskVariablePath = 4132;
inline constexpr std::uint16_t kUnitBytes = 4133;
inline constexpr std::uint16_t kUnitDays = 4134;
inline constexpr std::uint16_t kUnitLines = 4135;
inline constexpr std::uint16_t kUnitCharacters = 4136;
inline constexpr std::uint16_t kValueOf = 4137;
inline constexpr std::uint16_t kChoicesFor = 4138;
inline constexpr std::uint16_t kShowChoices = 4139;
inline constexpr std::uint16_t kChooseValue = 4140;
inline constexpr std::uint16_t kOfferLanguage = 4141;
inline constexpr std::uint16_t kOfferDescriptions = 4142;
inline constexpr std::uint16_t kKeysSet = 4146;
}  // namespace text

// The built-in English text of a number; empty if there is none.
std::string_view BuiltInText(std::uint16_t number);

}  // namespace tamarind
