#pragma once
// The numbers of the ADO enumerations the program passes and reads, under their ADO
// names, so call sites read as the original's.

namespace data::ado {

// ObjectStateEnum
inline constexpr int adStateClosed = 0;
inline constexpr int adStateOpen = 1;

// CursorLocationEnum
inline constexpr int adUseServer = 2;
inline constexpr int adUseClient = 3;

// CursorTypeEnum
inline constexpr int adOpenForwardOnly = 0;
inline constexpr int adOpenKeyset = 1;
inline constexpr int adOpenDynamic = 2;
inline constexpr int adOpenStatic = 3;

// LockTypeEnum
inline constexpr int adLockReadOnly = 1;

// CommandTypeEnum and ExecuteOptionEnum
inline constexpr int adCmdText = 1;
inline constexpr int adExecuteNoRecords = 128;
inline constexpr int adOptionUnspecified = -1;

// DataTypeEnum: the type number of a Field.
inline constexpr int adEmpty = 0;
inline constexpr int adSmallInt = 2;
inline constexpr int adInteger = 3;
inline constexpr int adSingle = 4;
inline constexpr int adDouble = 5;
inline constexpr int adCurrency = 6;
inline constexpr int adDate = 7;
inline constexpr int adBoolean = 11;
inline constexpr int adDecimal = 14;
inline constexpr int adTinyInt = 16;
inline constexpr int adUnsignedTinyInt = 17;
inline constexpr int adBigInt = 20;
inline constexpr int adGUID = 72;
inline constexpr int adBinary = 128;
inline constexpr int adChar = 129;
inline constexpr int adWChar = 130;
inline constexpr int adNumeric = 131;
inline constexpr int adDBDate = 133;
inline constexpr int adDBTime = 134;
inline constexpr int adDBTimeStamp = 135;
inline constexpr int adVarChar = 200;
inline constexpr int adLongVarChar = 201;
inline constexpr int adVarWChar = 202;
inline constexpr int adLongVarWChar = 203;
inline constexpr int adVarBinary = 204;
inline constexpr int adLongVarBinary = 205;

// Seconds a statement may run before it is stopped, as ADO's default.
inline constexpr int kDefaultCommandTimeout = 30;
// Seconds an Open may wait for the server or for a lock, as ADO's ConnectionTimeout.
inline constexpr int kConnectionTimeout = 15;

}  // namespace data::ado
