       IDENTIFICATION DIVISION.
       PROGRAM-ID. TESTDRV.
       AUTHOR. KORVANE IT.
      * TEST DRIVER FOR PAYCALC - DEVELOPMENT LPAR ONLY
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-TEST-CASE                 PIC 9(4).
       01  WS-EXPECTED                  PIC S9(11)V99 COMP-3.
       01  WS-RESULT                    PIC X(4).
       01  WS-FAILED                    PIC 9(4) VALUE ZERO.
      * THE OPERATOR'S SCREEN, WRITTEN WITH DISPLAY ON THE CONSOLE
      *@ object TESTSCRN | Console Screen | ScreenMap
       01  TESTSCRN.
           05  FILLER   PIC X(20) VALUE 'PAYCALC TEST DRIVER'.
           05  FILLER   PIC X(14) VALUE 'FAILED CASES: '.
           05  SCR-FAILED   PIC ZZZ9.
      *@ end object
           COPY PAYREC.
       PROCEDURE DIVISION.
       0000-MAIN SECTION.
           PERFORM [>1000-RUN-CASE] VARYING [WS-TEST-CASE]
               FROM 1 BY 1 UNTIL [WS-TEST-CASE] > 10
           DISPLAY 'FAILED CASES: ' [WS-FAILED]
           STOP RUN.
       1000-RUN-CASE.
           MOVE [WS-TEST-CASE] TO [PAY-ID]
           COMPUTE [PAY-AMOUNT] = [WS-TEST-CASE] * 100
           COMPUTE [WS-EXPECTED] = [PAY-AMOUNT] * 0.9875
           CALL [>'PAYCALC'] USING [&PAYREC]
           IF [PAY-NET] = [WS-EXPECTED]
               MOVE 'PASS' TO [WS-RESULT]
           ELSE
               MOVE 'FAIL' TO [WS-RESULT]
               ADD 1 TO [WS-FAILED]
           END-IF.
       END PROGRAM TESTDRV.
