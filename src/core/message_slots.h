// The message slots: what a caller fills before it asks for a message, and where the answer is.
#pragma once

#include <array>
#include <string>

/// Bits of `MsgFlags`.
enum MessageFlag : int {
  ButtonOk = 1,
  ButtonYes = 2,
  ButtonNo = 4,
  ButtonCancel = 8,
  ButtonHelp = 16,
  InputFirst = 64,
  InputSecond = 128,
  PictureOk = 0x100,
  PictureStop = 0x200,
  PictureQuestion = 0x400,
  MarkFirstButton = 0x1000,  // named by callers as the default button; the screen keeps its focus
  MarkSecondButton = 0x2000,
  HideActions = 0x10000,  // the hide box with its class of notice
  HideLimits = 0x20000,
  HideCharges = 0x40000,
  HideAutoBet = 0x80000,
  AnyHideBox = 0xF0000,
};

/// The combinations of flags in use.
enum MessageKind : int {
  NoScreen = 0,
  PlainOk = ButtonOk,
  OkStop = ButtonOk | PictureStop,
  OkHelpStop = ButtonOk | ButtonHelp | PictureStop,
  OkTick = ButtonOk | PictureOk,
  YesNo = ButtonYes | ButtonNo | PictureQuestion | MarkFirstButton,
  YesNoSecond = ButtonYes | ButtonNo | PictureQuestion | MarkSecondButton,
  YesNoCancel = ButtonYes | ButtonNo | ButtonCancel | PictureQuestion | MarkFirstButton,
  YesNoStop = ButtonYes | ButtonNo | PictureStop | MarkFirstButton,
  YesNoStopSecond = ButtonYes | ButtonNo | PictureStop | MarkSecondButton,
  InputOk = ButtonOk | InputSecond,
  InputOkCancel = ButtonOk | ButtonCancel | InputSecond,
  TwoInputsOkCancel = ButtonOk | ButtonCancel | InputFirst | InputSecond,
  InputOkStop = ButtonOk | InputSecond | PictureStop,
};

enum MessageAnswer : int { AnswerOk = 1, AnswerCancel = 2, AnswerYes = 6, AnswerNo = 7 };

/// Bits of `Notify`: the classes of notice that are still shown.
enum NoticeClass : int {
  NoticeActions = 1,
  NoticeLimits = 2,
  NoticeCharges = 4,
  NoticeAutoBet = 8,
  NoticeAutoBetHyper = 16,
};

struct MessageSlots {
  std::string MsgText;  // stays after the call: a text left here means that a routine spoke
  std::string MsgTitle;
  int MsgCtx = 0;  // help topic
  int MsgFlags = 0;
  int MsgAnswer = 0;
  std::array<std::string, 2> MsgInput;  // what the input boxes open with, then what was typed
  std::string LastErrorText;
  int LastSystemError = 0;  // the system's number of the failure told there, 0 for another fault
  int LastFileResult = 0;
};
