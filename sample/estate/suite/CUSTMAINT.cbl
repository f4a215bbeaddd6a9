       IDENTIFICATION DIVISION.
       PROGRAM-ID. {CUSTMAINT}.
       AUTHOR. KORVANE IT.
      * CUSTOMER MAINTENANCE - CICS TRANSACTION CM01
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-PROGRAM-NAME              PIC X(8) VALUE '{CUSTMAINT}'.
       01  WS-WORK.
           05  WS-CUST-ID               PIC 9(8).
           05  WS-RESP                  PIC S9(8) COMP.
           05  WS-ACCOUNT-AGE           PIC S9(5) COMP-3.
           05  WS-BALANCE               PIC S9(11)V99 COMP-3.
           05  WS-CUST-STATUS           PIC X(1).
           05  WS-MESSAGE               PIC X(60).
      *@ object WORK-AREAS | Record | ObjectInFile | packaged
       01  WORK-AREAS.
           05  WA-SAVE-BALANCE          PIC S9(11)V99 COMP-3.
           05  WA-SCREEN-MODE           PIC X(1) VALUE 'D'.
           05  WA-RETRY-COUNT           PIC 9(2) VALUE ZERO.
      *@ end object
           COPY {CUSTREC}.
           COPY {DATEPARM}.
           COPY {ERRFLDS}.
       LINKAGE SECTION.
       01  DFHCOMMAREA                  PIC X(100).
       PROCEDURE DIVISION USING DFHCOMMAREA.
           COPY {ERRHNDL}.
       0000-MAIN SECTION.
           PERFORM [>1000-RECEIVE-MAP]
           PERFORM [>2000-PROCESS]
           PERFORM [>8000-SEND-MAP]
           EXEC CICS RETURN TRANSID('CM01') END-EXEC.
       1000-RECEIVE-MAP.
           EXEC CICS RECEIVE MAP([>'{CUSTM1}']) MAPSET('{CUSTSET}')
                RESP([WS-RESP]) END-EXEC
           IF [WS-RESP] NOT = ZERO
               MOVE 'RECEIVE FAILED' TO [ERR-MESSAGE]
               PERFORM [>9900-ABEND-ROUTINE]
           END-IF
           MOVE [CUST-ID OF {CUSTREC}] TO [WS-CUST-ID].
       2000-PROCESS.
           EXEC CICS READ FILE('CUSTFILE') INTO([{CUSTREC}])
                RIDFLD([WS-CUST-ID]) RESP([WS-RESP]) END-EXEC
           MOVE [CUST-BALANCE OF {CUSTREC}] TO [WA-SAVE-BALANCE]
           MOVE [CUST-STATUS OF {CUSTREC}] TO [WS-CUST-STATUS]
           PERFORM [>2100-CHECK-DATES]
           IF [WS-ACCOUNT-AGE] > 30
               PERFORM [>2200-UPDATE-ACCOUNT]
           END-IF.
       2100-CHECK-DATES.
           MOVE 'AD' TO [DP-FUNCTION]
           MOVE [CUST-OPEN-DATE OF {CUSTREC}] TO [DP-DATE-IN]
           CALL [>'{DATEUTIL}'] USING [&DATE-PARMS]
           MOVE [DP-DAYS] TO [WS-ACCOUNT-AGE].
       2200-UPDATE-ACCOUNT.
           COMPUTE [WS-BALANCE] = [WA-SAVE-BALANCE] + [CUST-BALANCE]
           CALL [>'{ACCT}'] USING [&{CUSTREC}]
           MOVE [WS-BALANCE] TO [CUST-BALANCE OF {CUSTREC}].
       8000-SEND-MAP.
           MOVE [CUST-NAME OF {CUSTREC}] TO [WS-MESSAGE]
           EXEC CICS SEND MAP([>'{CUSTM1}']) MAPSET('{CUSTSET}')
                FROM([WS-MESSAGE]) ERASE END-EXEC.
       8100-SEND-LIST.
           EXEC CICS SEND MAP([>'{CUSTM2}']) MAPSET('{CUSTSET}')
                ERASE END-EXEC.
      *@ rules
       END PROGRAM {CUSTMAINT}.
