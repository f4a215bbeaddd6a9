DATECONV CSECT
* CONVERTS A YYYYMMDD DATE INTO A LILIAN DAY NUMBER
         STM   14,12,12(13)
         BALR  12,0
         USING *,12
         LM    2,3,0(1)
         PACK  WORK,0(8,2)
         CVB   4,WORK
         S     4,=F'1721425'
         ST    4,0(3)
         LM    14,12,12(13)
         SR    15,15
         BR    14
WORK     DS    D
         END   DATECONV
