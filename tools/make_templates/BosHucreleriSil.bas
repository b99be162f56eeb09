Attribute VB_Name = "Temizlik"
Option Explicit

' Turns cells that hold an empty text into truly empty ones, in the columns that can hold one: times and discharges.
' The tables call this once they are filled; formulas are left alone.
Public Sub BosHucreleriSil()
    BosMetinleriSil Worksheets("Saatlik"), 2
    BosMetinleriSil Worksheets("Saatlik"), 4
    BosMetinleriSil Worksheets("Saatlik"), 7
    BosMetinleriSil Worksheets("Saatlik"), 9
    BosMetinleriSil Worksheets("Gunluk"), 3
    BosMetinleriSil Worksheets("Gunluk"), 5
    BosMetinleriSil Worksheets("Gunluk"), 6
    BosMetinleriSil Worksheets("Gunluk"), 8
End Sub

Private Sub BosMetinleriSil(ByVal Sayfa As Object, ByVal Sutun As Long)
    Dim Son As Long, Sira As Long, Ilk As Long
    Dim Alan As Object
    Dim Degerler As Variant
    Son = Sayfa.UsedRange.Row + Sayfa.UsedRange.Rows.Count - 1
    If Son < 6 Then Exit Sub
    Set Alan = Sayfa.Range(Sayfa.Cells(5, Sutun), Sayfa.Cells(Son, Sutun))
    ' Numbers and texts of at least one character: when nothing else is there, no cell holds an empty text.
    If WorksheetFunction.CountA(Alan) = WorksheetFunction.Count(Alan) + WorksheetFunction.CountIf(Alan, "?*") Then Exit Sub
    Degerler = Alan.Value
    For Sira = 1 To Son - 4
        If VarType(Degerler(Sira, 1)) = vbString Then
            If Len(Degerler(Sira, 1)) = 0 Then
                If Ilk = 0 Then Ilk = Sira
                GoTo Sonraki
            End If
        End If
        If Ilk > 0 Then BolumuSil Sayfa, Sutun, Ilk + 4, Sira + 3
        Ilk = 0
Sonraki:
    Next
    If Ilk > 0 Then BolumuSil Sayfa, Sutun, Ilk + 4, Son
End Sub

Private Sub BolumuSil(ByVal Sayfa As Object, ByVal Sutun As Long, ByVal Ilk As Long, ByVal Son As Long)
    Dim Satir As Long
    Dim Formullu As Variant
    Formullu = Sayfa.Range(Sayfa.Cells(Ilk, Sutun), Sayfa.Cells(Son, Sutun)).HasFormula
    If Not IsNull(Formullu) Then
        If Not Formullu Then Sayfa.Range(Sayfa.Cells(Ilk, Sutun), Sayfa.Cells(Son, Sutun)).ClearContents
        Exit Sub
    End If
    For Satir = Ilk To Son
        If Not Sayfa.Cells(Satir, Sutun).HasFormula Then Sayfa.Cells(Satir, Sutun).ClearContents
    Next
End Sub
