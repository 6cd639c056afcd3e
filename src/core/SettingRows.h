#pragma once
// The map of qlt.ini: every setting is a cell of the grid lbxIni, addressed by row and
// column. These numbers are a contract with every installed qlt.ini; never renumber.

namespace Ini {
constexpr int Columns = 8;
constexpr int MinRows = 1000;

// ---- lists (first row, last row, column) --------------------------------------------
constexpr int PrgExternFirst = 1, PrgExternLast = 10, PrgExternNameCol = 2, PrgExternPathCol = 3;
constexpr int SignFirst = 1, SignLast = 10, SignCol = 4;
constexpr int FindChrFirst = 11, FindChrLast = 40, FindChrCol1 = 2, FindChrAndCol = 3, FindChrCol2 = 4;
constexpr int PictureTypeFirst = 41, PictureTypeLast = 70, PictureTypeCol = 2;
constexpr int MoodFirst = 51, MoodLast = 60, MoodCol = 3;
constexpr int RatingFirst = 61, RatingLast = 66, RatingCol = 3;
constexpr int GenreFirst = 1, GenreLast = 256, GenreCol = 5;
constexpr int LinkFirst = 1, LinkLast = 250, LinkCol1 = 6, LinkCol2 = 7;
constexpr int NegativeFirst = 1, NegativeLast = 1000, NegativeCol = 8;
constexpr int PatternFirst = 106, PatternLast = 115, PatternNameCol = 1, PatternTextCol = 2;
constexpr int FavoriteFirst = 116, FavoriteLast = 125, FavoriteCol = 1; // favourite folders of the tree

// ---- single values in column 1 ---------------------------------------------------------
constexpr int Col1 = 1;
constexpr int SinglePicLeft = 2, SinglePicTop = 3, SinglePicWidth = 4, SinglePicHeight = 5;
constexpr int LastExportFormat = 6;
constexpr int DrivePreset = 7; // txtPref_Drive_Preset
constexpr int LastDialogFolder = 8;
constexpr int TexteNoMsg = 9; // chbTexte_NoMsg
constexpr int PrintFirst = 10, PrintLast = 20;
constexpr int CloseFolderView = 22;  // chbPref_CloseFolderView
constexpr int PresetSubfolder = 24;  // chbPref_PresetSubfolder
constexpr int RenamePreview = 25;    // chbPref_RenamePreview
constexpr int PresetPathExport = 26; // txtPref_PresetPathExport
constexpr int NumberDigits = 27;     // optPref_AnzNum: digits of track numbers
constexpr int NoMsg = 28;            // chbTab1_NoMsg
constexpr int ShowOthers = 29;       // chbTab1_ShowOthers
constexpr int TexteOpenTxtWithClick = 31, TexteOpenLyricWithClick = 32, TexteTxt1Only = 33,
              TexteWithLyricsOnly = 34;
constexpr int PlaylistNoMsg = 35; // chbPlaylist_NoMsg
constexpr int PicAutoPic = 36;    // btnPic_AutoPic
constexpr int EmbeddedPicOption1 = 39, EmbeddedPicOption2 = 40;
constexpr int TagNoMsg = 41;        // chbTab2_NoMsg
constexpr int TagUpdateOption = 42; // OptTab2_Update...: chosen set 1 to 5
constexpr int Language = 43;        // LanguageColumn
constexpr int PicInch = 45;         // optPic_Inch when "1"
constexpr int PicWithSubFolderPic = 46, PicWithSubFolderiPic = 47;
constexpr int ToolTips = 49; // chbPref_TTText
constexpr int ThumbnailWidth = 50, ThumbnailHeight = 51;
constexpr int Picformat = 53; // chbPref_Picformat
constexpr int PicPaneLayout1 = 54, PicPaneLayout2 = 59;
constexpr int PicOnlyWithLink = 60, PicWithiPicOnly = 61;
constexpr int PicFileTypes = 59; // file types of the picture search ("jpg;png;..."), column 1
constexpr int PlaylistWithSubFolders = 62;
constexpr int PlaylistFolderPreset = 63;
constexpr int PlaylistFormat = 64; // 0 M3U, 1 M3U+PLS, 2 PLS
constexpr int TextPaneState = 65;
constexpr int TexteSongFolder = 65; // FrmTexte: folder of the last song chosen for a lyric or link
// the player: chbTab1_PlayWithChange, txtTab1_Sequenztime(0..2)
constexpr int PlayWithChange = 66;
constexpr int SequenceTimeFirst = 67, SequenceTimeLast = 69;
constexpr int ShowColumnRefPattern = 77; // FrmShowColumnRef
constexpr int RefListOption = 78;
constexpr int ScrollWindowOption = 79;
constexpr int ConfirmLinkDelete = 83; // chbPref_ConfirmLinkDelete
constexpr int PlaylistOption = 84;
constexpr int SkipSec = 84; // txtTab1_SkipSec (column 1; column 2 holds a playlist folder)
constexpr int SongtextCloseWhenFinished = 85;
constexpr int STextOption = 86;
constexpr int STextSubfolderSong = 88, STextSubfolderTxtLrc = 89;
constexpr int SongtextAlwaysOnTop = 90, SongtextShowTitle = 91;
constexpr int STextSource = 93;        // 1 Lrc, 2 Txt, 3 TxtLrc
constexpr int CaptionImportSlot5 = 97; // "1" when an import filled column 5
constexpr int CapColumnHide = 98;      // ChbCap_ColumnHide: reference column hidden in FrmCap
constexpr int PurgeLinklist = 99;      // chbPref_PurgeLinklist
constexpr int PictureListOption = 100;
constexpr int OptimalColumnWidth = 103; // chbPref_OptimalColumnWidth
constexpr int ScanOneThread = 131;      // chbPref_ScanOneThread: read files on one thread only

// ---- single values in column 2 ---------------------------------------------------------
constexpr int Col2 = 2;
constexpr int ScrollSkin = 71;
constexpr int PathScan = 72;       // file dialog of the scan
constexpr int PathCopyTarget = 73; // folder last used for copying
constexpr int PathRename1 = 74, PathRename2 = 82;
constexpr int PathPictures1 = 75, PathPictures2 = 100;
constexpr int PathSText1 = 76, PathSText2 = 80, PathSText3 = 81;
constexpr int PathTexte = 77;      // FrmTexte: folder of the last search for text files
constexpr int PathLyrics = 1;      // FrmTexte: folder of the last search for lyrics
constexpr int PathTexteLinks = 78; // FrmTexte: target folder of copied or moved linked files
constexpr int PathPlaylist1 = 79, PathPlaylist2 = 84; // 84 is also the playlist export folder
constexpr int PathRefExport = 85;
constexpr int LastSTextTxtLrcFolder = 83;
constexpr int TreeFolder = 86;    // drive and folder of the tree at the last close
constexpr int ActivePattern = 87; // index of the column pattern in use
constexpr int SongtextLeft = 93, SongtextTop = 94, SongtextWidth = 95, SongtextHeight = 96;
constexpr int PicExportFolder1 = 97, PicExportFolder2 = 98;
constexpr int EmbeddedPicListOption = 99; // folder of the embedded-picture search
constexpr int PicTextFolder = 39;         // where texts of pictures are saved
constexpr int PicSongFolder = 65;         // folder of songs linked to pictures
constexpr int RefListFile = 101;
constexpr int Paperbin = 102;         // chbPref_Paperbin
constexpr int TimeSizeData = 103;     // chbTab1_TimeSizeData
constexpr int PlaylistTimeSize = 104; // chbPlaylist_TimeSize
} // namespace Ini
