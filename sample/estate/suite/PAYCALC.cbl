       IDENTIFICATION DIVISION.
       PROGRAM-ID. {PAYCALC}.
       AUTHOR. KORVANE IT.
      * PAYMENT CALCULATION - FEES, NET AMOUNT, VALUE DATE
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-PROGRAM-NAME              PIC X(8) VALUE '{PAYCALC}'.
       01  WS-TOTALS.
           05  WS-TOTAL-GROSS           PIC S9(13)V99 COMP-3.
           05  WS-TOTAL-FEES            PIC S9(13)V99 COMP-3.
           05  WS-TOTAL-NET             PIC S9(13)V99 COMP-3.
           05  WS-PAY-COUNT             PIC 9(7) COMP-3.
       01  WS-FEE-RATE                  PIC 9V9(4) VALUE 0.0125.
      *@ object WORK-AREAS | Record | ObjectInFile
       01  WORK-AREAS.
           05  WA-FEE                   PIC S9(7)V99 COMP-3.
           05  WA-ROUNDED               PIC S9(11) COMP-3.
           05  WA-CURRENCY              PIC X(3) VALUE 'EUR'.
      *@ end object
           COPY {PAYREC}.
           COPY {DATEPARM}.
           COPY {ERRFLDS}.
       PROCEDURE DIVISION.
           COPY {ERRHNDL}.
       0000-MAIN SECTION.
           PERFORM [>1000-CALC-FEE]
           PERFORM [>2000-CALC-NET]
           PERFORM [>4000-POST]
           GOBACK.
       1000-CALC-FEE.
           COMPUTE [WA-FEE] ROUNDED = [PAY-AMOUNT] * [WS-FEE-RATE]
           IF [WA-FEE] < 1
               MOVE 1 TO [WA-FEE]
           END-IF
           MOVE [WA-FEE] TO [PAY-FEE OF {PAYREC}]
           ADD [PAY-FEE] TO [WS-TOTAL-FEES].
       2000-CALC-NET.
           COMPUTE [PAY-NET] = [PAY-AMOUNT] - [PAY-FEE]
           CALL [>'{PAYROUND}'] USING [&PAY-NET] [&WA-ROUNDED]
           ADD [PAY-AMOUNT] TO [WS-TOTAL-GROSS]
           ADD [PAY-NET] TO [WS-TOTAL-NET]
           MOVE [PAY-VALUE-DATE OF {PAYREC}] TO [DP-DATE-IN]
           MOVE 'VD' TO [DP-FUNCTION]
           CALL [>'{DATEUTIL}'] USING [&DATE-PARMS]
           IF [DP-RETURN-CODE] NOT = ZERO
               MOVE 'INVALID VALUE DATE' TO [ERR-MESSAGE]
               PERFORM [>9910-LOG-ERROR]
           END-IF.
       4000-POST.
           CALL [>'{PAYPOST}'] USING [&{PAYREC}]
           ADD 1 TO [WS-PAY-COUNT].
      *@ rules
       IDENTIFICATION DIVISION.
       PROGRAM-ID. {PAYROUND}.
       DATA DIVISION.
       LINKAGE SECTION.
       01  LK-AMOUNT    PIC S9(11)V99 COMP-3.
       01  LK-ROUNDED      PIC S9(11) COMP-3.
       PROCEDURE DIVISION USING [LK-AMOUNT] [LK-ROUNDED].
       0000-ROUND.
           COMPUTE [LK-ROUNDED] ROUNDED = [LK-AMOUNT]
           GOBACK.
       END PROGRAM {PAYROUND}.
       END PROGRAM {PAYCALC}.
